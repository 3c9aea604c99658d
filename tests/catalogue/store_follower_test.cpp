// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "catalogue/following/store_follower.h"
#include "tests/catalogue/store_update_fixture.h"

namespace ov::catalogue {

namespace {

using Steps = std::vector<std::function<void()>>;

class Follower : public OneStore {
protected:
    static constexpr std::chrono::seconds tooLong{60};

    // Does one step after the other, each once the catalogue has what the one before has brought;
    // the first when it has the store. False when one of them takes too long.
    bool follows(const std::string& root, const Steps& steps, FollowMeans means = {}) {
        std::stop_source stop;
        std::size_t step = 0;
        bool isDone = false;
        const auto until = std::chrono::steady_clock::now() + tooLong;
        means.update.stop = stop.get_token();
        means.updated = [&](const UpdateReport& report) { reports.push_back(report); };
        means.idle = [&] {
            // After the second update, which sees what changed during the first.
            const bool isThere = reports.size() > 1 && asked(root) == walked(root);
            isDone = isThere && step == steps.size();
            if (isDone || std::chrono::steady_clock::now() > until)
                stop.request_stop();
            else if (isThere)
                steps[step++]();
        };
        const auto opening = [this](platform::Status& status) {
            if (opens)
                opens();
            return openCatalogue(place(), Access::update, status);
        };
        rlimit before{};
        EXPECT_EQ(getrlimit(RLIMIT_NOFILE, &before), 0);
        const rlimit none{0, before.rlim_max};
        EXPECT_EQ(setrlimit(RLIMIT_NOFILE, mayWatch ? &before : &none), 0);
        StoreFollower follower(opening, root, std::move(means));
        EXPECT_EQ(setrlimit(RLIMIT_NOFILE, &before), 0);
        follower.run();
        return isDone;
    }
    // Everything that may happen to folders, by the system's calls.
    Steps everyChange() {
        const fs::path at = store.folder();
        return {[this] { store.add("new.WAV").add("ward/new.WAV"); },
                [this] { store.add("a/b/c/deep.WAV"); },
                [this] { store.add("a/b/c/deeper.WAV").add("_hidden/x.WAV"); },
                [at] { fs::rename(at / "a", at / "ward" / "moved"); },
                [this] { store.add("ward/moved/b/c/later.WAV"); },
                [this] { store.addLink("link", "ward/moved/b").addLink("loop", "."); },
                [this] { store.add("ward/moved/b/c/by link.WAV"); },
                [this] { store.addLink("link", "ward"); },
                [at] { fs::remove(at / "new.WAV"); },
                [at] { fs::remove_all(at / "ward" / "moved"); },
                [at] { fs::rename(at / "ward", at.parent_path() / (at.filename() += "-gone")); },
                [at] { fs::rename(at.parent_path() / (at.filename() += "-gone"), at / "back"); }};
    }

    std::vector<UpdateReport> reports;
    std::function<void()> opens; // before each update
    bool mayWatch = true;
};

} // namespace

TEST_F(Follower, FollowsEachChangeAndLooksOnlyAtIt) {
    for (int i = 0; i < 50; ++i)
        store.add("ward/" + std::to_string(i) + "/x.WAV");
    std::int64_t before = 0;
    std::size_t seen = 0;
    Steps steps = {[&] {
                       before = known().asOf;
                       seen = reports.size();
                       store.add("ward/7/new.WAV");
                   },
                   [&] {
                       const UpdateReport& report = reports.at(seen);
                       EXPECT_FALSE(report.isWhole);
                       EXPECT_EQ(report.written, 2);
                       EXPECT_EQ(report.listed, 1);
                       EXPECT_EQ(report.folders, 52);
                       EXPECT_GT(known().asOf, before);
                   }};
    for (auto& step : everyChange())
        steps.push_back(std::move(step));
    EXPECT_TRUE(follows(store.directory(), steps, {.update = {.clock = muchLater}}));
}

// By a watch for each folder, where none for all of a file system is allowed.
TEST_F(Follower, FollowsEachChangeWithoutRights) {
    store.add("ward/x.WAV");
    for (const fs::path& path : {folder(), store.folder()})
        fs::permissions(path, fs::perms::all);
    fs::permissions(store.folder() / "ward", fs::perms::all);
    Steps steps = everyChange();
    steps.resize(steps.size() - 2); // to a folder that is not ours
    EXPECT_TRUE(
        tests::isTrueUnprivileged([&] { return follows(store.directory(), std::move(steps)); }));
}

TEST_F(Follower, FollowsWhateverHappens) {
    const std::uint32_t seed = std::random_device()();
    SCOPED_TRACE("seed " + std::to_string(seed));
    RandomTree tree(seed);
    Steps steps;
    for (int i = 0; i < 20; ++i)
        steps.emplace_back([&tree] { tree.changeElsewhere(25); });
    EXPECT_TRUE(follows(tree.store.directory(), steps));
}

// Then all is looked at from time to time, and that is told once.
TEST_F(Follower, LooksFromTimeToTimeWhereTheSystemDoesNotTell) {
    store.add("one.WAV").add("ward/two.WAV");
    mayWatch = false;
    Texts restricted;
    FollowMeans means;
    means.interval = std::chrono::seconds(1);
    means.restricted = [&](const platform::Status& why) { restricted.push_back(why.text()); };
    EXPECT_TRUE(follows(store.directory(), {[this] { store.add("ward/three.WAV"); }}, means));
    ASSERT_EQ(restricted.size(), 1);
    EXPECT_NE(restricted[0].find("max_user_instances"), std::string::npos) << restricted[0];
}

TEST_F(Follower, SeesWhatIsMounted) {
    const std::string root = "my store "; // blanks are told in numbers
    const std::string server = root + "/server";
    store.add(root + "/one.WAV").addFolder(server);
    if (!tests::isTrueInChild([] { return tests::hasOwnMounts(); }))
        GTEST_SKIP() << "needs the right to mount";
    EXPECT_TRUE(tests::isTrueInChild([&] {
        Steps steps = {[&] {
                           EXPECT_TRUE(tests::mountEmpty(store.native(server)));
                           store.add(server + "/two.WAV");
                       },
                       [&] { store.add(server + "/deep/three.WAV"); }};
        return tests::hasOwnMounts() && follows(store.path(root + "\\"), steps);
    }));
}

// Others that update meanwhile are waited for, also at the beginning, and nothing that was told is
// forgotten.
TEST_F(Follower, GoesOnAfterOthers) {
    store.add("a/ward/one.WAV");
    std::unique_ptr<Catalogue> other;
    int tries = 0;
    const auto lock = [&] {
        other = open(Access::update);
        EXPECT_TRUE(other->lockForUpdate().ok());
        tries = 0;
    };
    opens = [&] {
        if (other && ++tries == 2)
            other = nullptr;
    };
    lock();
    EXPECT_TRUE(follows(store.directory(), {[&] {
                            lock();
                            store.add("a/ward/two.WAV");
                        }}));
    for (const UpdateReport& report : reports)
        EXPECT_TRUE(report.status.ok()) << report.status.description();
    EXPECT_FALSE(reports.back().isWhole);
}

} // namespace ov::catalogue
