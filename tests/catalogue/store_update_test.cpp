// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "catalogue/arranged_names.h"
#include "tests/catalogue/store_update_fixture.h"

namespace ov::catalogue {

INSTANTIATE_TEST_SUITE_P(In, StoreUpdate, ::testing::Values(Home{"AFile"}),
                         ::testing::PrintToStringParamName());

TEST_P(StoreUpdate, FollowsEveryChange) {
    const std::uint32_t seed = std::random_device()();
    SCOPED_TRACE("seed " + std::to_string(seed));
    RandomTree tree(seed);
    const std::string root = tree.store.directory();
    for (int i = 0; i < 40; ++i) {
        tree.changeElsewhere(25);
        const UpdateReport report = update(root);
        ASSERT_TRUE(report.status.ok()) << report.status.description();
        ASSERT_EQ(asked(root), walked(root));
    }
}

TEST_P(StoreUpdate, ListsOnlyWhatHasChangedOrWasListedTooSoon) {
    EXPECT_EQ(update().listed, 4);
    const UpdateReport again = update();
    EXPECT_EQ(again.listed, 4);
    EXPECT_EQ(again.written, 0); // but the names are the same
    EXPECT_EQ(updateLater().listed, 4);
    EXPECT_EQ(updateLater().listed, 0);
    store.add("ward/ERL/new.WAV").add("x/deep/five.WAV");
    const UpdateReport report = updateLater();
    EXPECT_EQ(report.listed, 3);  // with the new one
    EXPECT_EQ(report.written, 3); // with the one beside it
    EXPECT_EQ(asked(), walked());
    fs::rename(store.folder() / "x", store.folder() / "a");
    EXPECT_EQ(updateLater().removed, 2);
    EXPECT_EQ(asked(), walked());
}

TEST_P(StoreUpdate, BelievesTimesOnlyWhileTheyAreTrusted) {
    UpdateMeans means{.clock = muchLater};
    const auto listed = [&] { return update(store.directory(), means).listed; };
    EXPECT_EQ(listed(), 4);
    const auto catalogue = open(Access::update);
    const std::int64_t id = known().id;
    std::vector<Folder> folders;
    EXPECT_TRUE(catalogue->folders(id, folders).ok());
    for (Folder& folder : folders) {
        EXPECT_EQ(folder.settled, Settled::yes);
        folder.settled = Settled::byTrust;
        EXPECT_TRUE(catalogue->putFolder(id, folder).ok());
    }
    EXPECT_TRUE(catalogue->commit().ok());
    means.trustsFolderTimes = true;
    EXPECT_EQ(listed(), 0);
    means.trustsFolderTimes = false;
    EXPECT_EQ(listed(), 4);
}

TEST_P(StoreUpdate, GoesOnAfterItWasKilledAndTellsThatUntilThen) {
    updateLater();
    const std::int64_t whole = known().asOf;
    EXPECT_EQ(known().begun, 0);
    for (int i = 0; i < 200; ++i)
        store.add(std::to_string(i % 20) + "/" + std::to_string(i) + ".WAV");
    for (int last = 1; last < 22; last += 3) {
        store.add(std::to_string(last) + "/also.WAV");
        EXPECT_FALSE(tests::isTrueInChild([&] {
            int folders = 0;
            UpdateMeans means;
            means.batch = 5;
            means.clock = muchLater;
            means.watch = [&](const UpdateReport& report) {
                if (report.folders > folders && ++folders == last)
                    std::raise(SIGKILL);
            };
            update(store.directory(), means);
            return true;
        }));
        const Texts all = walked();
        for (const std::string& path : asked()) // what is there already is true
            ASSERT_NE(std::find(all.begin(), all.end(), path), all.end()) << path;
    }
    EXPECT_EQ(known().asOf, whole);
    EXPECT_GT(known().begun, whole);
    EXPECT_GT(updateLater().folders, updateLater().listed);
    EXPECT_EQ(asked(), walked());
    EXPECT_EQ(known().begun, 0);
    EXPECT_GT(known().asOf, whole);
}

TEST_P(StoreUpdate, GoesOnAfterItWasStopped) {
    std::stop_source stop;
    const UpdateMeans means{.stop = stop.get_token(), .watch = [&](const UpdateReport& report) {
                                if (report.listed == 2)
                                    stop.request_stop();
                            }};
    EXPECT_TRUE(update(store.directory(), means).stopped);
    EXPECT_EQ(known().asOf, 0);
    update();
    EXPECT_EQ(asked(), walked());
    EXPECT_NE(known().asOf, 0);
}

// The other one asks in the middle, and gets what was committed; on a server another store can be
// updated.
TEST_P(StoreUpdate, LetsOthersAskAndNobodyUpdateTheSame) {
    const tests::TemporaryStore other;
    std::ofstream(other.folder() / "other.WAV");
    update();
    const Texts before = asked();
    addMany(100);
    Texts between;
    platform::Status refused;
    platform::Status ofOther;
    const UpdateMeans means{.watch = [&](const UpdateReport& report) {
        if (report.written == 0 || !between.empty())
            return;
        between = asked();
        refused = update().status;
        ofOther = update(other.directory()).status;
    }};
    EXPECT_TRUE(update(store.directory(), means).status.ok());
    EXPECT_EQ(between, before);
    EXPECT_PRED2(holds, refused.text(), "another program is updating it");
    EXPECT_EQ(ofOther.ok(), isOnServer()) << ofOther.description();
    EXPECT_EQ(asked(), walked());
}

// And at what lies in it where a link leads elsewhere now, to folders of the same names.
TEST_P(StoreUpdate, LooksOnlyAtWhatIsToldToHaveChanged) {
    store.add("x/ERL/deep/five.WAV").add("ward/ERL/deep/six.WAV").addLink("link", "ward");
    updateLater();
    const Texts before = asked();
    ToldChanges changes{{store.directory("ward")}, known().asOf + 1};
    const UpdateMeans means{.changes = &changes, .clock = muchLater};
    store.add("x/ERL/unseen.WAV");
    EXPECT_EQ(update(store.directory(), means).written, 0);
    EXPECT_EQ(asked(), before);
    EXPECT_EQ(known().asOf, changes.allUntil);
    store.addLink("link", "x");
    changes = {{store.directory(), store.directory("x/ERL")}, std::nullopt};
    const std::int64_t asOf = known().asOf;
    EXPECT_FALSE(update(store.directory(), means).isWhole);
    EXPECT_EQ(asked(), walked());
    EXPECT_EQ(known().asOf, asOf);
}

TEST_P(StoreUpdate, KeepsStoresApart) {
    const tests::TemporaryStore other;
    std::ofstream(other.folder() / "other.WAV");
    update();
    update(other.directory());
    const tests::TemporaryStore third;
    fs::create_directory_symlink(store.folder(), third.native("link"));
    EXPECT_PRED2(holds, update(third.directory("link")).status.text(), "is the store");
    EXPECT_PRED2(holds, update(store.directory("ward")).status.text(), "lies in the store");
    const std::string above = store.folder().parent_path().native();
    EXPECT_PRED2(holds, update(platform::fromNativePath(above) + "\\").status.text(),
                 "holds the store");
    EXPECT_EQ(asked(), walked());
    EXPECT_EQ(asked(other.directory()), walked(other.directory()));
    forget();
    EXPECT_PRED2(holds, asked().front(), "is not in the catalogue, which has");
    EXPECT_EQ(asked(other.directory()), walked(other.directory()));
}

TEST(ArrangedNames, KeepsWhatCanStay) {
    using Positions = std::vector<std::int64_t>;
    constexpr std::int64_t last = Catalogue::mostPositions - 1;
    // What was kept, the names that are there; their positions, which are new, what is removed.
    using Case = std::tuple<KeptNames, std::vector<std::string_view>, Positions, std::vector<bool>,
                            Positions>;
    const std::vector<Case> cases = {
        {{{"a", "c"}, {15, 31}}, {"a", "b", "c"}, {15, 23, 31}, {false, true, false}, {}},
        {{{"a", "b", "c"}, {0, 1, 2}}, {"a", "c", "d"}, {0, 2, 18}, {false, false, true}, {1}},
        {{{"b", "c"}, {0, 1}}, {"a", "b", "c"}, {15, 31, 47}, {true, true, true}, {0, 1}},
        {{{"a", "c"}, {4, 5}}, {"a", "b", "c"}, {4, 20, 36}, {false, true, true}, {5}},
        {{{"a"}, {last}}, {"a", "b"}, {15, 31}, {true, true}, {last}},
        {{{"a", "b"}, {1, 2}}, {"b", "a"}, {2, 18}, {false, true}, {1}},
        {{{"a"}, {1}}, {}, {}, {}, {1}}};
    for (const auto& [kept, names, positions, isNew, removed] : cases) {
        const ArrangedNames arranged(names, kept);
        EXPECT_EQ(arranged.positions, positions);
        EXPECT_EQ(arranged.isNew, isNew);
        EXPECT_EQ(arranged.removed, removed);
    }
}

} // namespace ov::catalogue
