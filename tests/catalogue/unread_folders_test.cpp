// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "catalogue/catalogue_check.h"
#include "tests/catalogue/store_update_fixture.h"

namespace ov::catalogue {

namespace {

class UnreadFolders : public OneStore {
protected:
    UnreadFolders() {
        store.add("one.WAV").add("ward/two.WAV").add("ward/ERL/three.WAV").add("x/four.WAV");
    }
};

} // namespace

TEST_F(UnreadFolders, TakesNothingThatCannotBeReadForEmpty) {
    tests::TemporaryStore flat;
    flat.add("a.WAV");
    for (const tests::TemporaryStore* const one : {&store, &flat}) {
        const auto updated = [&] { return update(one->directory()).status; };
        EXPECT_TRUE(updated().ok());
        const Texts before = asked(one->directory());
        fs::rename(one->folder(), one->folder().native() + "-aside");
        EXPECT_EQ(updated().kind(), platform::Status::Kind::missing);
        EXPECT_EQ(asked(one->directory()), before);
        fs::create_directory(one->folder()); // where it was mounted
        EXPECT_PRED2(holds, updated().text(), "perhaps nothing is mounted there");
        EXPECT_EQ(asked(one->directory()), before);
        fs::remove(one->folder());
        fs::rename(one->folder().native() + "-aside", one->folder());
    }
}

TEST_F(UnreadFolders, KeepsWhatWasMountedBelow) {
    const std::string server = store.addFolder("server").native("server");
    const auto mountsIn = [&] { return tests::hasOwnMounts() && tests::mountEmpty(server); };
    if (!tests::isTrueInChild(mountsIn))
        GTEST_SKIP() << "needs the right to mount";
    EXPECT_TRUE(tests::isTrueInChild([&] {
        bool isRight = mountsIn();
        store.add("server/five.WAV").add("server/deep/six.WAV");
        isRight = isRight && update().status.ok();
        const Texts before = asked();
        isRight = isRight && before == walked() && umount(server.c_str()) == 0;
        for (int i = 0; i < 2; ++i) {
            const UpdateReport report = updateLater();
            isRight = isRight && report.unreadable == 1 && asked() == before;
        }
        fs::remove(server);
        return isRight && update().unreadable == 0 && asked() == walked() && asked() != before;
    }));
}

TEST_F(UnreadFolders, LeavesAStoreThatGoesAwayMeanwhile) {
    update();
    const Texts before = asked();
    const std::string aside = store.folder().native() + "-aside";
    const UpdateMeans means{.watch = [&](const UpdateReport& report) {
        if (report.folders == 1 && !fs::exists(aside))
            fs::rename(store.folder(), aside);
    }};
    EXPECT_PRED2(holds, update(store.directory(), means).status.text(),
                 "unmounted or moved during the update");
    EXPECT_EQ(asked(), before);
    fs::rename(aside, store.folder());
}

TEST_F(UnreadFolders, KeepsAFolderThatCannotBeRead) {
    update();
    const Texts before = asked();
    fs::permissions(store.folder() / "ward", fs::perms::none);
    fs::permissions(folder(), fs::perms::all);
    fs::permissions(store.folder(), fs::perms::all);
    const auto give = [this](uid_t owner) {
        for (const auto& file : fs::directory_iterator(folder()))
            EXPECT_TRUE(geteuid() != 0 || chown(file.path().c_str(), owner, owner) == 0);
    };
    give(tests::nobody);
    EXPECT_TRUE(tests::isTrueUnprivileged([&] {
        const UpdateReport report = update();
        return report.status.ok() && report.unreadable == 1 && report.problems.size() == 1;
    }));
    give(geteuid());
    fs::permissions(store.folder() / "ward", fs::perms::all);
    SearchReport report;
    EXPECT_EQ(asked(*open(Access::ask), allOf(store.directory()), report), before);
    EXPECT_EQ(report.foldersUnreadable, 1);
    update();
    asked(*open(Access::ask), allOf(store.directory()), report = {});
    EXPECT_EQ(report.foldersUnreadable, 0);
}

TEST_F(UnreadFolders, IsComparedWithWhatIsThere) {
    store.addLink("ward/loop", "..");
    update();
    const auto checked = [&] {
        CheckReport report;
        const auto catalogue = open(Access::ask);
        EXPECT_TRUE(checkStore(*catalogue, known(), report).ok());
        Texts told;
        for (const std::string& directory : report.differing)
            told.push_back(directory.substr(store.directory().size()));
        for (const platform::Status& problem : report.problems)
            told.push_back(problem.text());
        return told;
    };
    EXPECT_EQ(checked(), Texts());
    store.addFolder("ward/new");
    fs::remove_all(store.folder() / "x");
    EXPECT_EQ(checked(), (Texts{"", "ward\\", "x\\"}));
    // Where not all are looked at, others are each time.
    int found = 0;
    for (int i = 0; i < 60; ++i) {
        CheckReport report;
        EXPECT_TRUE(checkStore(*open(Access::ask), known(), report, 2).ok());
        EXPECT_LE(report.folders, 2);
        found += static_cast<int>(std::ranges::count(report.differing, store.directory("x")));
    }
    EXPECT_GT(found, 0);
    EXPECT_LT(found, 60);
}

} // namespace ov::catalogue
