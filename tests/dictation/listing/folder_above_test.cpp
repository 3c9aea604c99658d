// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "dictation/listing/folder_above.h"
#include "tests/temporary_store.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <deque>

namespace ov::modDictation {
namespace {

TEST(FolderAbove, IsTheOneThatWasListed) {
    tests::TemporaryStore store;
    store.addFolder("a/b").addFolder("other/b");
    const std::string a = store.directory("a");
    const std::string b = store.directory("a/b");
    const auto stamp = platform::directoryStamp(b);
    const FolderAbove above(a, platform::directoryStamp(a)->id);
    const FolderAbove ofOne(a, above.id());
    const FolderAbove late(a, above.id());
    const FolderAbove given(store.directory(), platform::directoryStamp(store.directory())->id);
    const auto now = FolderAbove::Clock::now();
    const FolderAbove quick(a, above.id(), given.hold(a), now + std::chrono::hours(1));
    const FolderAbove slow(a, above.id(), given.hold(a), now - std::chrono::hours(1));
    for (const FolderAbove* each : {&above, &above, &above, &late, &late, &ofOne, &quick, &slow})
        each->expectOne();
    EXPECT_EQ(above.stampOf(b), stamp);
    EXPECT_EQ(above.stampOf(store.directory("a/none")), std::nullopt);
    EXPECT_EQ(ofOne.stampOf(b), stamp);
    EXPECT_TRUE(above.finishOne());
    fs::rename(store.native("a"), store.native("moved"));
    fs::rename(store.native("other"), store.native("a"));
    EXPECT_EQ(above.stampOf(b), stamp) << "as it was held before";
    EXPECT_EQ(late.stampOf(b), platform::directoryStamp(b)) << "as the path leads elsewhere";
    EXPECT_NE(late.stampOf(b), stamp);
    EXPECT_NE(ofOne.stampOf(b), stamp) << "nothing was held for one";
    EXPECT_EQ(quick.stampOf(b), stamp);
    EXPECT_EQ(quick.hold(b)->stamp(), stamp);
    EXPECT_TRUE(quick.seenThrough(now) > now && slow.seenThrough(now) == now);
    EXPECT_TRUE(quick.finishOne()) << "was asked as soon as the one above";
    EXPECT_FALSE(slow.finishOne());
    EXPECT_NE(quick.stampOf(b), stamp) << "let go of";
    EXPECT_TRUE(ofOne.finishOne() && late.finishOne() && late.finishOne()) << "nothing was held";
    EXPECT_TRUE(above.finishOne()) << "others follow";
    EXPECT_FALSE(above.finishOne());
}

TEST(FolderAbove, LeavesFilesToTheHost) {
    tests::TemporaryStore store;
    store.addFolder("a/b");
    const std::string a = store.directory("a");
    const auto hold = [&] {
        std::deque<platform::HeldDirectory> many;
        while (many.size() < 300)
            many.emplace_back(a);
        const FolderAbove above(a, platform::directoryStamp(a)->id);
        above.expectOne();
        above.expectOne();
        EXPECT_EQ(above.stampOf(store.directory("a/b")),
                  platform::directoryStamp(store.directory("a/b")));
        return std::ranges::count_if(many, &platform::HeldDirectory::isHeld);
    };
    EXPECT_EQ(hold(), 192);
    EXPECT_EQ(hold(), 192) << "when others let go";
}

} // namespace
} // namespace ov::modDictation
