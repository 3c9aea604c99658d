// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "dictation/search/search.h"
#include "platform/directories.h"
#include "tests/settings_fixture.h"
#include "tests/slow_store.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <random>
#include <thread>

namespace ov::modDictation {
namespace {

namespace fs = std::filesystem;
using Texts = std::vector<std::string>;

// As one thread finds them that lists each folder when it comes to it.
void walkPlainly(const std::string& directory, std::size_t depth, Texts& found,
                 std::vector<std::uint64_t> inside = {}) {
    platform::DirectoryReader reader;
    Texts subfolders;
    static_cast<void>(reader.open(directory));
    inside.push_back(reader.stamp().id.file);
    if (std::count(inside.begin(), inside.end(), inside.back()) > 1)
        return;
    for (platform::DirectoryEntry entry; reader.next(entry);) {
        const std::string name(entry.name);
        if (entry.kind == platform::FileKind::file && name.ends_with(".WAV"))
            found.push_back(directory + name);
        if (entry.kind == platform::FileKind::directory && name[0] != '_' && inside.size() <= depth)
            subfolders.push_back(directory + name + "\\");
    }
    for (const std::string& subfolder : subfolders)
        walkPlainly(subfolder, depth, found, inside);
}

Texts pathsOf(const DictationList& hits) {
    Texts paths;
    for (std::int32_t i = 1; i <= hits.size(); ++i)
        paths.push_back(pathOf(hits[i]));
    return paths;
}

// Long after whatever the tests have changed.
RememberedStore::Moment muchLater() {
    const RememberedStore::Moment now = RememberedStore::now();
    return {now.wall + 3'600'000'000'000, now.steady};
}

// A tree that is changed at random, as other programs do.
class RandomTree {
public:
    explicit RandomTree(std::uint32_t seed) : random_(seed) { store.addFolder("busy"); }

    void change() {
        const fs::path folder = anyFolder();
        std::error_code gone; // also where it tries to move a folder into itself
        switch (below(8)) {
        case 0:
            fs::remove_all(folder / anyName(), gone);
            break;
        case 1:
            fs::rename(folder / anyName(), anyFolder() / anyName(), gone);
            break;
        case 2:
            fs::create_directory_symlink(anyFolder(), folder / ("to" + anyName()), gone);
            break;
        case 3:
            fs::create_directory(folder / ("_" + anyName()), gone);
            break;
        case 4:
        case 5:
            fs::create_directory(folder / anyName(), gone);
            break;
        default:
            std::ofstream(folder / (anyName() + ".WAV"));
        }
    }
    void change(int times) {
        while (times-- > 0)
            change();
    }

    tests::TemporaryStore store;

private:
    int below(int end) { return static_cast<int>(random_() % static_cast<std::uint32_t>(end)); }
    std::string anyName() { return std::to_string(below(40)); }
    fs::path anyFolder() {
        std::vector<fs::path> folders{store.folder() / "busy"};
        std::error_code gone;
        for (const auto& entry : fs::recursive_directory_iterator(folders[0], gone))
            if (entry.is_directory(gone) && !entry.is_symlink(gone))
                folders.push_back(entry.path());
        return folders[static_cast<std::size_t>(below(static_cast<int>(folders.size())))];
    }

    std::mt19937 random_;
};

class Listing : public tests::SettingsTest {
protected:
    static Texts find(const tests::TemporaryStore& store, const SearchMeans& means,
                      std::int32_t depth = 4, std::int32_t limit = usualLimit) {
        DictationList hits;
        search({store.directory(), {}, true, depth, limit}, hits, means);
        return pathsOf(hits);
    }
};

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
    const auto remembered =
        std::make_shared<RememberedStore>(RememberedStore::Rules{.clock = muchLater});
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
    std::atomic<bool> ended = false;
    std::thread others([&] {
        while (!ended)
            tree.change();
    });
    const auto remembered = std::make_shared<RememberedStore>();
    for (int i = 0; i < 20; ++i) {
        Texts found = find(tree.store, {.remembered = i % 2 == 0 ? remembered : nullptr});
        std::erase_if(found, [](const std::string& path) {
            return path.find("\\busy\\") != std::string::npos;
        });
        EXPECT_EQ(found, expected);
    }
    ended = true;
    others.join();
    Texts all;
    walkPlainly(tree.store.directory(), 4, all);
    EXPECT_EQ(find(tree.store, {.remembered = remembered}), all);
}

TEST_F(Listing, RememberedIsTheSameAsFresh) {
    for (const std::uint32_t seed : {5U, 6U}) {
        RandomTree tree(seed);
        const auto believing =
            std::make_shared<RememberedStore>(RememberedStore::Rules{.clock = muchLater});
        for (int round = 0; round < 20; ++round) {
            tree.change(round % 10 == 0 ? 50 : 3);
            Texts expected;
            walkPlainly(tree.store.directory(), 4, expected);
            EXPECT_EQ(find(tree.store, {.remembered = believing}), expected);
            waitForNextTime(tree.store);
        }
    }
}

// A folder that changes right after it was listed may keep its time.
TEST_F(Listing, OfAFolderThatHasJustChangedIsNotBelieved) {
    tests::TemporaryStore store;
    const auto remembered = std::make_shared<RememberedStore>();
    for (std::size_t i = 1; i <= 200; ++i) {
        store.add(std::to_string(i) + ".WAV");
        EXPECT_EQ(find(store, {.remembered = remembered}).size(), i);
    }
}

TEST_F(Listing, IsBelievedByTheRules) {
    tests::TemporaryStore store;
    store.add("a/x.WAV").addFolder("links").addLink("links/x.WAV", "../a/x.WAV");
    const std::string a = store.directory("a");
    const auto stampOf = [&](const char* name) {
        return platform::directoryStamp(store.directory(name)).value();
    };
    constexpr std::int64_t second = 1'000'000'000;
    const std::int64_t changed = stampOf("a").changed;
    EXPECT_EQ(platform::directoryTimes(a), platform::DirectoryTimes::ofOurClock)
        << "tests need a folder on a usual file system";
    const FolderListing listing{stampOf("a"), {std::make_shared<ListedNames>()}};
    RememberedStore store1;
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
    FolderListing links{stampOf("links"), {}, true};
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

TEST_F(Listing, MemoryOfTheRememberedIsBounded) {
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
}

} // namespace
} // namespace ov::modDictation
