// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "platform/threads/coarse_clock.h"
#include "tests/recording_interface.h"

#include <gtest/gtest.h>

#include <chrono>

namespace ov::platform {
namespace {

TEST(UserInterface, BuiltInOneAnswersWithTheDefault) {
    for (const auto answer : {MessageAnswer::no, MessageAnswer::yes}) {
        ::testing::internal::CaptureStderr();
        MessageBox box;
        box.text = "Really?";
        box.title = "Title";
        box.defaultAnswer = answer;
        EXPECT_EQ(userInterface().showMessage(box), answer);
        EXPECT_EQ(::testing::internal::GetCapturedStderr(), "Title: Really?\n");
    }
}

TEST(UserInterface, PumpHandsOverNowAndThen) {
    constexpr int loops = 100'000;
    const tests::RecordingInterface person;
    for (int i = 0; i < loops; ++i)
        processMessagesNowAndThen();
    EXPECT_TRUE(person.pumped > 0 && person.pumped < loops);
    const tests::RecordingInterface next;
    processMessagesNowAndThen();
    EXPECT_EQ(next.pumped, 1) << "a new one is asked at once";
}

TEST(CoarseClock, GoesForward) {
    const std::int64_t before = coarseMilliseconds();
    std::int64_t next = before;
    const auto until = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (next == before && std::chrono::steady_clock::now() < until)
        next = coarseMilliseconds();
    EXPECT_GT(next, before);
}

TEST(UserInterface, HandlerThatPumpsDoesNotStartItselfOver) {
    constexpr int enough = 1000;
    int depth = 0;
    const tests::RecordingInterface person([&depth] {
        if (++depth < enough)
            processMessagesNowAndThen();
    });
    processMessagesNowAndThen();
    EXPECT_LT(depth, enough);
}

} // namespace
} // namespace ov::platform
