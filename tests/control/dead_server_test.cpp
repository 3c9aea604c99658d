// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "platform/threads/errand.h"
#include "tests/slow_store.h"
#include "tests/wave_files.h"
#include "tests/window/window_fixture.h"

#include <QProgressBar>

// What the window does while the file server does not answer. Nothing here releases a call before
// the window has gone on without it.

namespace ov {
namespace {

class DeadServer : public WindowTest {
public:
    void SetUp() override {
        if (!server.isMounted())
            GTEST_SKIP() << SlowStore::why;
        host().answers["PI_GetDirectory(204)"] = server.directory();
        ticks_.callOnTimeout([this] { ++ticks; });
        ticks_.start(1);
    }
    void TearDown() override { EXPECT_FALSE(server.timedOut()); }

protected:
    // A user who waits notices what the window handles meanwhile.
    int ticks = 0;
    SlowStore server{store};

private:
    QTimer ticks_;
};

TEST_F(DeadServer, ASearchSaysThatTheStoreCannotBeReachedAndLaterFindsIt) {
    store.add("ward/2$ROH.WAV");
    openControl();
    server.hang();
    ticks = 0;
    search();
    EXPECT_TRUE(server.hasCaught());
    EXPECT_GT(ticks, 10);
    EXPECT_NE(user->onlyText().find("cannot be reached"), std::string::npos);
    server.release();
    EXPECT_TRUE(QTest::qWaitFor([this] { // once the call is back
        searchAll();
        return results().model()->rowCount() == 1;
    }));
}

TEST_F(DeadServer, TheControlEndsWhileTheStoreIsLookedFor) {
    openControl();
    server.hang();
    QTimer look;
    look.callOnTimeout([this] {
        if (server.hasCaught())
            control_ = nullptr;
    });
    look.start(0);
    search();
    EXPECT_EQ(control_, nullptr);
}

TEST_F(DeadServer, ADictationIsPlayedOnceItsServerIsBack) {
    const Environment silent("SDL_AUDIODRIVER", "dummy");
    writeWave(store.native("2$ROH.WAV"), {}, sweep(8000, 800000));
    openAndSearch();
    results().selectRow(0);
    auto& state = widget<QProgressBar>("prgSearchPlayerStatus");
    server.hang();
    for (const bool stopped : {true, false}) {
        key(results(), Qt::Key_Return);
        EXPECT_EQ(state.format(), QStringLiteral("Not ready"));
        ticks = 0;
        EXPECT_TRUE(QTest::qWaitFor([this] { return ticks > 10; }));
        EXPECT_TRUE(server.hasCaught());
        if (stopped)
            press("cmdSearchPlayer(2)");
    }
    server.release();
    EXPECT_TRUE(QTest::qWaitFor([&] { return state.format() == QLatin1String("Playing"); }, 60000));
}

TEST_F(DeadServer, SettingsThatWereNotReadAreNotWrittenOver) {
    const std::string saved = "[OVSearch.ctrlOVSearch]\r\nSettingsCopied=-1\r\n";
    TemporaryStore place;
    place.addLink("settings", platform::toNativePath(server.directory()));
    store.add("local.ini", saved);
    host().answers["PI_GetLocalINIFile"] = place.path("settings/local.ini");
    host().answers["PI_GetDirectory(32)"] = place.directory("settings");
    modFilePath::SetDirectory(modFilePath::directory_id::log, place.directory("settings"));
    server.hang();
    openControl();
    EXPECT_TRUE(server.hasCaught());
    server.release();
    place.addLink("settings", store.folder().native()); // where it may be written
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return !platform::CalledPlace::isSilent(place.directory("settings")); }));
    QTest::mouseClick(&widget<QRadioButton>("optCriteriaCompare(0)"), Qt::LeftButton);
    closeControl();
    EXPECT_EQ(readBytes(store.native("local.ini")), saved);
    EXPECT_NE(readBytes(store.native("OVSearch_.log")), "") << "the log goes on";
    modFilePath::reset();
}

} // namespace
} // namespace ov
