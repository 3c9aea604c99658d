// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "tests/slow_store.h"
#include "tests/window/window_fixture.h"

// What the window does while the file server does not answer. Nothing here releases a call before
// the window has gone on without it.

namespace ov {
namespace {

using namespace tests;

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
    ASSERT_EQ(user->boxes.size(), 1U);
    EXPECT_NE(user->boxes[0].text.find("cannot be reached"), std::string::npos);
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

} // namespace
} // namespace ov
