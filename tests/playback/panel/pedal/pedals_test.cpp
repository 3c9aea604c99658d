// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "tests/playback/panel/pedal/pedals_fixture.h"
#include "tests/playback/panel/player_fixture.h"

namespace ov {
namespace {

class Pedals : public Player {
protected:
    Pedals() {
        pedals.desk->setAssignments(
            PedalAssignments("7;1234:abcd 30=1 48=3 46=4")); // A plays, B and C wind
        pedals.plugIn();
        selected = store.path("one.WAV");
    }
    // What is asked again and again is not what is tested here.
    bool isShown(const char* state) { return shown().substr(9) == state; }
    void waitForState(const char* state) {
        waitFor([&] { return isShown(state); });
        EXPECT_EQ(shown().substr(9), state);
    }
    void hold(unsigned key) {
        pedals.down(key);
        waitForState("Playing");
    }
    void release(unsigned key) {
        pedals.up(key);
        waitForState("Paused");
    }

    FakePedals pedals;
};

TEST_F(Pedals, PlayWhileHeldAndBackUp) {
    choose(&PlayerChoices::backUpSeconds, 3);
    hold(KEY_A);
    moveTo(50);
    selected = store.path("two.WAV"); // looked at meanwhile
    release(KEY_A);
    int rest = position();
    EXPECT_NEAR(rest, 47500, 700) << "it goes back as it rests";
    EXPECT_EQ(shown(), "00:00:47 Paused");
    media.takeSent();
    hold(KEY_A);
    EXPECT_EQ(media.takeOpened(), 0) << "what is open stays the one that is heard";
    EXPECT_NEAR(position(), rest, 1500) << "not back once more";
    EXPECT_GE(position(), rest);
    release(KEY_A);
    rest = position();
    press(1);
    EXPECT_TRUE(isShown("Playing")) << "the button goes on as well";
    EXPECT_GE(position(), rest);
    press(2);
    hold(KEY_A);
    EXPECT_EQ(media.takeOpened(), 1);
    EXPECT_LT(position(), 5000) << "after a stop, the selected one";
}

TEST_F(Pedals, WindWhileHeld) {
    play("one.WAV");
    moveTo(40);
    press(1);
    pedals.down(KEY_C);
    waitFor([] { return position() > 46000; });
    EXPECT_TRUE(isShown("Playing")) << "short pieces are heard";
    release(KEY_C);
    const int rest = position();
    EXPECT_GT(rest, 44000);
    press(1);
    pedals.down(KEY_B);
    waitFor([rest] { return position() < rest - 5000; });
    pedals.up(KEY_B);
    pedals.tread(KEY_E);
    EXPECT_TRUE(isShown("Playing")) << "as before";
}

TEST_F(Pedals, DoAllThatCanBeAssigned) {
    choose(&PlayerChoices::timeStampForm, std::string("(%1%)"));
    // From and to in seconds.
    const std::tuple<PedalAction, int, int, const char*> cases[] = {
        {PedalAction::jumpBack, 50, 43, "Playing"},
        {PedalAction::jumpForward, 50, 57, "Playing"},
        {PedalAction::playAgain, 50, 45, "Playing"},
        {PedalAction::toStart, 50, 0, "Playing"},
        {PedalAction::playOrPause, 50, 50, "Paused"},
        {PedalAction::timeStamp, 70, 70, "Playing"},
        {PedalAction::stop, 50, -1, "-"}};
    for (const auto& [action, from, to, state] : cases) {
        SCOPED_TRACE(static_cast<int>(action));
        play("one.WAV");
        selected = store.path("two.WAV"); // what is heard stays
        PedalAssignments assignments("7");
        assignments.assign({FakePedals::kind, KEY_D}, action);
        pedals.desk->setAssignments(assignments);
        moveTo(from);
        pedals.tread(KEY_D);
        EXPECT_TRUE(isShown(state)) << shown();
        EXPECT_NEAR(position(), to < 0 ? -1 : to * 1000 + (to > 0 ? 500 : 0), 900);
        if (action == PedalAction::playOrPause)
            pedals.tread(KEY_D);
        EXPECT_EQ(isShown("Playing"), action != PedalAction::stop) << "again";
    }
    EXPECT_EQ(QApplication::clipboard()->text(), QStringLiteral("(00:01:10)"));
}

TEST_F(Pedals, ObeyInTheWindowThatWasUsedLast) {
    const auto first = std::move(panel_);
    makePanel();
    panel_->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(panel_.get()));
    hold(KEY_A);
    EXPECT_FALSE(first->isOpen());
    first->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(first.get()));
    waitForState("Paused");
    EXPECT_FALSE(first->isOpen()) << "a pedal that is held means the one before";
    pedals.up(KEY_A);
    panel_->PlayerStop();
    pedals.down(KEY_A);
    waitFor([&] { return first->isOpen(); });
    EXPECT_FALSE(panel_->isOpen());
    first->PlayerStop();
    panel_->PlayerPlay();
    pedals.up(KEY_A);
    pedals.tread(KEY_A);
    EXPECT_TRUE(isShown("Paused")) << "played last is used last";
    hold(KEY_A);
    panel_->PlayerStop();
    panel_ = nullptr; // while it is held
    pedals.up(KEY_A);
    pedals.tread(KEY_A);
    EXPECT_TRUE(first->isOpen());
}

TEST_F(Pedals, AreLeftToOthersAgainWhereSomebodyTypesOnThem) {
    pedals.desk->setAssignments(PedalAssignments("7;1234:abcd! 30=9"));
    waitFor([this] { return pedals.inputs.isGrabbed("event3"); });
    for (const unsigned key : std::to_array<unsigned>({KEY_A, KEY_B, KEY_B, KEY_C, KEY_A}))
        pedals.tread(key);
    EXPECT_TRUE(pedals.inputs.isGrabbed("event3"));
    EXPECT_FALSE(pedals.desk->isLetGo(FakePedals::kind));
    pedals.tread(KEY_D);
    EXPECT_TRUE(pedals.desk->isLetGo(FakePedals::kind));
    waitFor([this] { return !pedals.inputs.isGrabbed("event3"); });
    pedals.desk->setAssignments(PedalAssignments("7;1234:abcd! 30=8"));
    waitFor([this] { return pedals.inputs.isGrabbed("event3"); });
}

TEST_F(Pedals, DoNothingWhileSomebodyLooks) {
    {
        const PedalDesk::Look look(*pedals.desk);
        pedals.tread(KEY_A);
        EXPECT_FALSE(panel_->isOpen());
    }
    pedals.tread(KEY_A);
    EXPECT_TRUE(panel_->isOpen());
    pedals.desk->setAssignments({});
    EXPECT_TRUE(pedals.desk->situation().devices.empty()) << "nothing is read any more";
}

} // namespace
} // namespace ov
