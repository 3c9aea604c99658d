// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "support/language/text_ids.h"
#include "tests/playback/panel/player_fixture.h"
#include "widgets/text.h"

#include <QToolTip>
#include <tuple>

namespace ov {
namespace {

TEST_F(Player, RepeatsAPassageUntilToldToPlayOn) {
    const auto actions = panel_->findChildren<QAction*>();
    const auto loop = std::ranges::find(actions, widgets::text(text_id::loopMenu), &QAction::text);
    ASSERT_NE(loop, actions.end());
    panel_->markLoop();
    play("one.WAV");
    moveTo(20);
    const QImage without = seek().grab().toImage();
    press(1);
    panel_->markLoop();
    panel_->markLoop();
    EXPECT_TRUE(QToolTip::text().contains(u"too short"));
    panel_->markLoop();
    panel_->skip(5);
    (*loop)->trigger(); // from 20.5 to 25.5
    EXPECT_EQ(modMultimedia::MciGetMode("PBWave"), "stopped") << "what pauses is not played";
    EXPECT_LT(position(), 21500) << "but comes to its beginning";
    EXPECT_NE(seek().grab().toImage(), without) << "it is shown";
    press(0);
    for (int round = 0; round < 2; ++round) {
        moveTo(24);
        waitFor([] { return position() < 21500; });
        EXPECT_EQ(modMultimedia::MciGetMode("PBWave"), "playing");
        EXPECT_GT(position(), 20300);
    }
    moveTo(40); // behind it nothing is repeated
    EXPECT_EQ(modMultimedia::MciGetMode("PBWave"), "playing");
    EXPECT_GT(position(), 35000);
    moveTo(24);
    waitFor([] { return position() < 21500; }); // who comes to it again is caught again
    panel_->markLoop();
    moveTo(24);
    waitFor([] { return position() > 26000; });
    EXPECT_EQ(modMultimedia::MciGetMode("PBWave"), "playing");
    panel_->markLoop();
    press(2);
    play("two.WAV");
    EXPECT_EQ(modMultimedia::MciGetMode("PBWave"), "playing");
    EXPECT_LT(position(), 5000) << "each dictation has its own";
    // In blocks of 40 ms, at whose edge a play may end before its mark.
    writeWave(store.native("gsm.WAV"), {SF_FORMAT_GSM610}, sweep(8000, 800000));
    panel_->PlayerStop();
    panel_->PlayerOpenFile(store.path("gsm.WAV"));
    waitFor([this] { return panel_->isOpen(); });
    for (const int mark : {8000, 9010}) {
        modMultimedia::MciSeek("PBWave", mark);
        panel_->markLoop();
    }
    selected = store.path("gsm.WAV");
    press(0);
    waitFor([] { return position() > 8700; });
    waitFor([] { return position() < 8500; });
    EXPECT_EQ(modMultimedia::MciGetMode("PBWave"), "playing");
    press(1);
    panel_->markLoop(); // no more
    press(1);
    waitFor([] { return position() > 9300; });
    EXPECT_EQ(modMultimedia::MciGetMode("PBWave"), "playing") << "beyond what was repeated";
}

// The device stands still there until the player looks at it again, which it is kept from here.
TEST_F(Player, ObeysBetweenTwoRoundsOfAPassage) {
    const std::tuple<const char*, std::function<void()>, bool, int> cases[] = {
        {"pause", [this] { press(1); }, false, 20000},
        {"pause by key", [this] { panel_->playOrPause(); }, false, 20000},
        {"pedal up", [this] { panel_->pedalRest(); }, false, 20000},
        {"play", [this] { panel_->PlayerPlay(); }, true, 20000},
        {"go back", [this] { panel_->skip(-5); }, true, 15000},
        {"play on", [this] { panel_->markLoop(); }, true, 20000}};
    for (const auto& [what, act, plays, from] : cases) {
        SCOPED_TRACE(what);
        panel_->PlayerStop();
        play("one.WAV");
        press(1);
        for (const int mark : {20000, 21000}) {
            modMultimedia::MciSeek("PBWave", mark);
            panel_->markLoop();
        }
        panel_->PlayerPlay();
        auto& timer = child<QTimer>(*panel_, "timerSearchPlayerStatus");
        timer.stop();
        waitFor([] { return modMultimedia::MciGetMode("PBWave") == "stopped"; });
        EXPECT_EQ(panel_->status().mode, PlayerStatus::Mode::playing) << "for all that others see";
        act();
        timer.start();
        tick();
        EXPECT_EQ(modMultimedia::MciGetMode("PBWave"), plays ? "playing" : "paused");
        EXPECT_NEAR(position(), from + 600, 900);
    }
}

} // namespace
} // namespace ov
