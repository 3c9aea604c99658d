// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "control/filter/aside_work.h"
#include "tests/window/window_fixture.h"

#include <QThread>
#include <atomic>

namespace ov {
namespace {

using AsideWorkTest = tests::WindowTest;

TEST_F(AsideWorkTest, EndsWorkThatNobodyWaitsForAnyMore) {
    std::atomic<bool> ended{false};
    AsideWork aside;
    aside.start(
        [&](const std::stop_token& stop) -> AsideWork::Delivery {
            while (!stop.stop_requested())
                QThread::msleep(1);
            ended = true;
            return {};
        },
        [] {});
    bool delivered = false;
    aside.start([&](const auto&) { return [&] { delivered = true; }; }, [] {});
    EXPECT_TRUE(QTest::qWaitFor([&] { return ended && delivered; }, 60000));
}

} // namespace
} // namespace ov
