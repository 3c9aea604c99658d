// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "tests/dictation/listing/listing_fixture.h"
#include "tests/fake_host.h"

#include <chrono>
#include <thread>

namespace ov::modDictation {
namespace {

using Remembered = ListingTest;

// The clock that the times of folders are taken from goes in steps.
void waitForNextTime(const tests::TemporaryStore& store) {
    const auto time = [&] { return platform::directoryStamp(store.directory("clock"))->changed; };
    fs::create_directory(store.folder() / "clock");
    for (const std::int64_t before = time(); time() == before;) {
        std::ofstream(store.folder() / "clock/x");
        fs::remove(store.folder() / "clock/x");
    }
    fs::remove(store.folder() / "clock");
}

TEST_F(Remembered, IsTheSameAsFresh) {
    for (const std::uint32_t seed : {5U, 6U}) {
        RandomTree tree(seed);
        const auto believing = believingStore();
        for (int round = 0; round < 20; ++round) {
            tree.changeElsewhere(round % 10 == 0 ? 50 : 3);
            Texts expected;
            walkPlainly(tree.store.directory(), 4, expected);
            EXPECT_EQ(find(tree.store, {.remembered = believing}), expected);
            waitForNextTime(tree.store);
        }
    }
}

// A folder that changes right after it was listed may keep its time.
TEST_F(Remembered, FolderThatHasJustChangedIsNotBelieved) {
    tests::TemporaryStore store;
    const auto remembered = std::make_shared<RememberedStore>();
    for (std::size_t i = 1; i <= 200; ++i) {
        store.add(std::to_string(i) + ".WAV");
        EXPECT_EQ(find(store, {.remembered = remembered}).size(), i);
    }
}

TEST_F(Remembered, IsBelievedByTheRules) {
    tests::TemporaryStore store;
    store.add("a/x.WAV").addFolder("links").addLink("links/x.WAV", "../a/x.WAV");
    const std::string a = store.directory("a");
    const auto stampOf = [&](const char* name) {
        return platform::directoryStamp(store.directory(name)).value();
    };
    constexpr std::int64_t second = 1'000'000'000;
    const std::int64_t changed = stampOf("a").changed;
    RememberedStore store1;
    const auto timesOf = [&](const std::string& directory) {
        FolderReader reader;
        EXPECT_TRUE(reader.open(directory).ok());
        return store1.timesOf(reader);
    };
    EXPECT_EQ(timesOf(a), platform::DirectoryTimes::ofOurClock)
        << "tests need a folder on a usual file system";
    EXPECT_EQ(timesOf("\\proc\\"), platform::DirectoryTimes::unknown);
    const FolderListing listing{stampOf("a"), {std::make_shared<ListedNames>()}, false, timesOf(a)};
    store1.keep(a, listing, {changed + second, 0});
    EXPECT_FALSE(store1.unchanged(a)) << "too fresh";
    store1.keep(a, listing, {changed + second, 1000});
    EXPECT_FALSE(store1.unchanged(a)) << "still, when it is seen again";
    store1.keep(a, listing, {changed + 3 * second, 0});
    EXPECT_TRUE(store1.unchanged(a));
    store1.forget();
    EXPECT_FALSE(store1.unchanged(a));
    store1.keep(a, listing, {changed + 3 * second, 0});
    EXPECT_TRUE(store1.unchanged(a));
    const FolderListing links{stampOf("links"), {}, true, timesOf(a)};
    store1.keep(store.directory("links"), links, {changed + 100 * second, 0});
    EXPECT_FALSE(store1.unchanged(store.directory("links"))) << "a link may lead elsewhere";
    fs::rename(store.folder() / "a", store.folder() / "b");
    EXPECT_FALSE(store1.unchanged(a)) << "gone";
    store.addFolder("a");
    EXPECT_FALSE(store1.unchanged(a)) << "another one";
    store1.keep("\\proc\\", {stampOf("/proc"), {}}, {changed + 1000 * second, 0});
    EXPECT_FALSE(store1.unchanged("\\proc\\")) << "nobody knows what its times are worth";
    RememberedStore trusting({.trustsUnknown = true});
    for (const std::int64_t seen : {0, 1000, 2500}) {
        trusting.keep("\\proc\\", {stampOf("/proc"), {}}, {changed, seen});
        EXPECT_EQ(trusting.unchanged("\\proc\\").has_value(), seen > 2000)
            << "seen twice with time between, whatever clock that was";
    }
}

// What is mounted over a folder, or leads there by another way, while it is listed.
TEST_F(Remembered, TimesAreThoseOfTheFolderThatIsListed) {
    tests::TemporaryStore store;
    store.addFolder("a").addLink("way", "/proc");
    const std::string way = store.directory("way");
    RememberedStore remembered({.clock = muchLater});
    FolderReader reader;
    ASSERT_TRUE(reader.open(way).ok());
    store.addLink("way", "a");
    remembered.keep(way, {reader.stamp(), {}, false, remembered.timesOf(reader)},
                    remembered.begin());
    store.addLink("way", "/proc");
    EXPECT_FALSE(remembered.unchanged(way));
}

// Other file systems come and go over folders that are remembered. In a process of its own, whose
// mounts nobody else sees.
TEST_F(Remembered, FolderThatIsMountedOverIsListed) {
    tests::TemporaryStore store;
    store.add("a/b/below.WAV").add("_other/above.WAV").add("x.WAV");
    const auto mountAlone = [] { return tests::hasOwnMounts(geteuid() == 0 ? 0 : CLONE_NEWUSER); };
    if (!tests::isTrueInChild(mountAlone))
        GTEST_SKIP() << "needs a right to mount";
    EXPECT_TRUE(tests::isTrueInChild([&] {
        const auto remembered = believingStore();
        const auto finds = [&](const Texts& expected) {
            Texts fresh;
            walkPlainly(store.directory(), 4, fresh);
            return fresh == expected && find(store, {.remembered = remembered}) == expected;
        };
        const std::string place = store.native("a");
        const Texts below{store.path("x.WAV"), store.path("a/b/below.WAV")};
        const Texts above{store.path("x.WAV"), store.path("a/above.WAV")};
        return mountAlone() && finds(below) &&
               mount(store.native("_other").c_str(), place.c_str(), nullptr, MS_BIND, nullptr) ==
                   0 &&
               finds(above) && umount(place.c_str()) == 0 && finds(below) &&
               tests::mountEmpty(place) && finds({below[0]}) && umount(place.c_str()) == 0 &&
               finds(below);
    }));
}

// Also those folders are missed of which the one above was asked when it was elsewhere already.
TEST_F(Remembered, FolderThatIsMovedInMidSearchIsMissed) {
    // The folders in a, what goes, what comes instead, whether the root has vanished.
    const std::tuple<int, const char*, const char*, bool> cases[] = {
        {2, "s/a", nullptr, false},
        {2, "s/a", "s/a/other.WAV", false},
        {2, "s/a", "s/a/1/other.WAV", false},
        {2, "s/a", "s/a/2/other.WAV", false},
        {2, "s", nullptr, true},
        {2, "s", "s/a/other.WAV", true},
        {1, "s/a", nullptr, false},
        {1, "s/a", "s/a/1/other.WAV", false}};
    for (const auto& [folders, gone, instead, rootVanished] : cases) {
        tests::TemporaryStore store;
        store.add("s/a/1/x.WAV").add("s/d/x.WAV");
        if (folders == 2)
            store.add("s/a/2/x.WAV");
        const auto remembered = believingStore();
        const SearchMeans notAhead{.remembered = remembered, .aheadBytes = 0};
        DictationList hits;
        EXPECT_EQ(search({store.directory("s"), {}}, hits, notAhead).foldersUnreadable, 0);
        const tests::StartedPlugIn plugIn;
        int met = 0; // of the folders in a
        plugIn.host->onCall = [&, folders = folders, gone = gone,
                               instead = instead](const std::string& call) {
            if (call.find("\\s\\a\\") == std::string::npos || call.ends_with("\\a\\\")") ||
                ++met != folders)
                return;
            if (folders == 1) // or it is as if it had been moved a moment later
                std::this_thread::sleep_for(std::chrono::milliseconds(150));
            fs::rename(store.folder() / gone, store.folder() / "moved");
            if (instead != nullptr)
                store.add(instead);
        };
        hits.clear();
        const SearchReport report = search({store.directory("s"), {}}, hits, notAhead);
        EXPECT_EQ(met, folders);
        EXPECT_EQ(report.foldersUnreadable, 1) << gone;
        EXPECT_EQ(report.rootVanished, rootVanished) << gone;
        EXPECT_GE(hits.size(), rootVanished ? 1 : folders) << "the rest is found";
    }
}

TEST_F(Remembered, MemoryIsBounded) {
    tests::TemporaryStore store;
    for (int i = 0; i < 100; ++i)
        store.add(std::to_string(i) + "/" + std::string(200, 'x') + ".WAV");
    const auto remembered = std::make_shared<RememberedStore>(
        RememberedStore::Rules{.mostBytes = 20'000, .clock = muchLater});
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(find(store, {.remembered = remembered}).size(), 100U);
        EXPECT_LE(remembered->bytes(), 20'000U);
    }
    EXPECT_GT(remembered->bytes(), 10'000U);
    tests::TemporaryStore other;
    other.add("a/1.WAV");
    for (int i = 0; i < 3; ++i)
        find(other, {.remembered = remembered});
    EXPECT_TRUE(remembered->unchanged(other.directory("a"))) << "what nobody searches gives way";
}

} // namespace
} // namespace ov::modDictation
