// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "dictation/listing/folder_above.h"
#include "dictation/listing/listing_ahead.h"
#include "dictation/listing/listing_pace.h"
#include "tests/dictation/listing/listing_fixture.h"
#include "tests/slow_store.h"

#include <deque>
#include <sys/prctl.h>
#include <thread>

namespace ov::modDictation {
namespace {

using Listing = ListingTest;

TEST_F(Listing, AheadGivesTheOrderOfOneThread) {
    for (const std::uint32_t seed : {1U, 2U}) {
        RandomTree tree(seed);
        tree.change(150);
        for (const std::int32_t depth : {0, 1, 4}) {
            Texts expected;
            walkPlainly(tree.store.directory(), static_cast<std::size_t>(depth), expected);
            for (const std::size_t ahead :
                 {std::size_t{0}, std::size_t{3000}, ListingAhead::usualBytes})
                EXPECT_EQ(find(tree.store, {.aheadBytes = ahead}, depth), expected) << ahead;
            expected.resize(std::min<std::size_t>(expected.size(), 7));
            EXPECT_EQ(find(tree.store, {}, depth, 7), expected);
        }
    }
}

// Larger than what is read at once, and than what may be known ahead.
TEST_F(Listing, OfLargeFoldersComesInParts) {
    tests::TemporaryStore store;
    for (int i = 0; i < 1200; ++i)
        store.add((i % 3 == 0 ? "a/" : "a/b/") + std::to_string(i) + std::string(200, 'x') +
                  ".WAV");
    Texts expected;
    walkPlainly(store.directory(), 4, expected);
    const auto remembered = believingStore();
    for (const std::size_t ahead : {std::size_t{0}, ListingAhead::usualBytes})
        for (int i = 0; i < 2; ++i)
            EXPECT_EQ(find(store, {.remembered = remembered, .aheadBytes = ahead}), expected);
    for (std::int32_t limit = 300; limit < 330; ++limit) { // a part ends among them
        DictationList hits;
        const SearchReport report = search({store.directory("a\\b"), {}, true, 4, limit}, hits);
        EXPECT_TRUE(report.limitReached) << limit;
    }
    EXPECT_GT(remembered->bytes(), std::size_t{240'000});
}

// What nobody touches is found once, in order, whatever happens beside it.
TEST_F(Listing, OfATreeThatChangesMeanwhile) {
    RandomTree tree(4);
    tree.change(100);
    for (int i = 0; i < 300; ++i)
        tree.store.add("still/" + std::to_string(i % 20) + "/" + std::to_string(i) + ".WAV");
    Texts expected;
    walkPlainly(tree.store.directory("still"), 4, expected);
    const pid_t other = fork();
    if (other == 0) {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        for (;;)
            tree.change();
    }
    const auto remembered = std::make_shared<RememberedStore>();
    for (int i = 0; i < 20; ++i) {
        Texts found = find(tree.store, {.remembered = i % 2 == 0 ? remembered : nullptr});
        std::erase_if(found, [](const std::string& path) {
            return path.find("\\busy\\") != std::string::npos;
        });
        EXPECT_EQ(found, expected);
    }
    kill(other, SIGKILL);
    waitpid(other, nullptr, 0);
    Texts all;
    walkPlainly(tree.store.directory(), 4, all);
    EXPECT_EQ(find(tree.store, {.remembered = remembered}), all);
}

// A server that is silent below one folder holds up neither the others nor the stop.
TEST_F(Listing, GoesOnBesideAFolderThatHangs) {
    tests::TemporaryStore store;
    for (int i = 0; i < 30; ++i)
        store.add(std::to_string(i) + "/x.WAV");
    store.add("30/x.WAV").add("30/hangs/x.WAV");
    tests::SlowStore server(store);
    if (!server.isMounted())
        GTEST_SKIP() << tests::SlowStore::why;
    Texts expected;
    walkPlainly(server.directory(), 1, expected);
    expected.erase(std::ranges::find(expected, server.path("30/x.WAV")) + 1, expected.end());
    server.hang("any", "/30/hangs");
    DictationList hits;
    std::stop_source stop;
    const auto watch = [&](const SearchReport& soFar) {
        if (soFar.filesTested == std::ssize(expected) && server.hasCaught())
            stop.request_stop();
    };
    const SearchReport report = search({server.directory(), {}}, hits, {stop.get_token(), watch});
    EXPECT_TRUE(report.stopped);
    EXPECT_EQ(pathsOf(hits), expected);
    EXPECT_FALSE(server.timedOut());
}

// Keeps the test from looking while somebody is at work.
void waitUntilOnlyThisThreadRuns() {
    const auto others = [] {
        std::string states;
        for (const auto& thread : fs::directory_iterator("/proc/self/task")) {
            std::ifstream file(thread.path() / "status");
            if (thread.path().filename() != std::to_string(gettid()))
                for (std::string line; std::getline(file, line);)
                    if (line.starts_with("State") || line.find("ctxt") != std::string::npos)
                        states += line;
        }
        return states;
    };
    const auto isBusy = [](const std::string& states) {
        return states.find("State:\tR") != std::string::npos ||
               states.find("State:\tD") != std::string::npos;
    };
    for (std::string before, now = others(); isBusy(now) || now != before;) {
        std::this_thread::yield();
        before = std::exchange(now, others());
    }
}

// A chain, in which one folder can be listed at a time.
TEST_F(Listing, AheadStopsAtItsBoundAndGoesOnAsTheWalkTakes) {
    constexpr std::size_t bound = 60'000;
    tests::TemporaryStore store;
    std::string folder;
    for (int i = 0; i < 1000; ++i) {
        store.add(folder + std::to_string(i) + std::string(200, 'x') + ".WAV");
        if (i % 20 == 19)
            folder += "a/";
    }
    const auto remembered = believingStore();
    ListingAhead ahead({store.directory(), -1, bound, remembered});
    Texts found;
    std::size_t taken = 0;
    for (AheadFolderPtr at = ahead.root(); at;) {
        waitUntilOnlyThisThreadRuns();
        EXPECT_LT(remembered->bytes(), taken + bound * 3 / 2);
        EXPECT_GT(remembered->bytes(), std::min<std::size_t>(taken + bound / 4, 200'000));
        ahead.enter(at);
        ListedNamesPtr names;
        for (auto answer = ListingAhead::Taken::names; answer != ListingAhead::Taken::end;) {
            answer = ahead.take(*at, names);
            std::string_view rest = names ? names->dictations : std::string_view();
            for (ListedName name; takeName(rest, name);)
                found.push_back(at->path + std::string(name.name));
            taken += names ? names->bytes() : 0;
        }
        const auto subfolders = ahead.takeSubfolders(*at);
        at = subfolders.empty() ? nullptr : subfolders[0];
    }
    Texts expected;
    walkPlainly(store.directory(), 100, expected);
    EXPECT_EQ(found, expected);
}

int threadsAfter(const ListingPace::Cost& cost) {
    ListingPace pace;
    for (int i = 0; i < 100; ++i)
        pace.add(cost);
    return pace.threads();
}

TEST(ListingPace, HasManyThreadsOnlyWhereTheyWait) {
    const int processors = static_cast<int>(std::thread::hardware_concurrency());
    EXPECT_EQ(threadsAfter({1e-4, 1e-4}), processors);
    EXPECT_EQ(threadsAfter({2e-4, 1e-4}), processors) << "now and then";
    EXPECT_GE(threadsAfter({1e-3, 1e-4}), std::min(processors * 9, ListingPace::mostThreads));
    EXPECT_EQ(threadsAfter({10, 1e-6}), ListingPace::mostThreads);
    EXPECT_EQ(threadsAfter({0, 0}), processors);
}

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
