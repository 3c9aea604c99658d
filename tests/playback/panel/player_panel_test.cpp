// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "playback/panel/choices/choice_keeper.h"
#include "playback/panel/player_texts.h"
#include "tests/failing_reads.h"
#include "tests/playback/panel/player_fixture.h"

#include <QAccessible>
#include <QToolTip>

namespace ov {
namespace {

constexpr int bytesPerSecond = 16000;
constexpr int headerSize = 44;

TEST_F(Player, PlaysPausesAndStopsTheSelectedDictation) {
    EXPECT_EQ(seek().maximum(), 1);
    EXPECT_EQ(seek().property("Tag").toString(), QStringLiteral("0"));
    for (const int button : {0, 1, 2})
        press(button);
    play("gone.WAV");
    EXPECT_EQ(media.takeOpened(), 0) << "nothing is selected, or it is gone";
    EXPECT_EQ(shown(), "00:00:00 -");

    play("one.WAV");
    EXPECT_EQ(child<QLabel>(*panel_, "lblSearchPlayerLength").text(), QStringLiteral("00:01:40"));
    moveTo(61);
    tick();
    waitUntilShown("00:01:01 Playing");
    EXPECT_NEAR(seek().value(), 61000 * 32767 / 100000, 400);
    EXPECT_NEAR(state().value(), 61500, 1000);
    waitFor([this] { return level().value() > 1000; });
    press(1);
    EXPECT_EQ(shown().substr(9), "Paused");
    press(1);
    EXPECT_EQ(shown().substr(9), "Playing");
    press(0);
    EXPECT_EQ(media.takeOpened(), 1) << "the open file is not opened again";
    EXPECT_GE(position(), 61000);

    play("two.WAV");
    waitUntilShown("00:00:00 Playing");
    EXPECT_EQ(media.takeOpened(), 1);
    press(2);
    EXPECT_EQ(shown(), "00:00:00 -");
    EXPECT_EQ(seek().value() + state().value() + level().value(), 0);
    EXPECT_FALSE(panel_->isOpen());
    media.takeSent();
    press(2);
    EXPECT_TRUE(media.sent.empty()) << "twice is once";
}

TEST_F(Player, ClosesWhenTheDictationEnds) {
    const std::string one = readBytes(store.native("one.WAV"));
    writeWave(store.native("short.WAV"), {}, sweep(8000, 2400));
    writeWave(store.native("empty.WAV"), {}, {});
    store.add("cut off.WAV", one.substr(0, headerSize + 4800));
    for (const char* name : {"short.WAV", "empty.WAV", "cut off.WAV", "one.WAV"}) {
        SCOPED_TRACE(name);
        play(name);
        if (selected == store.path("one.WAV")) // somebody cuts it off meanwhile
            fs::resize_file(store.native(name), headerSize + bytesPerSecond);
        waitFor([this] { return !panel_->isOpen(); });
        EXPECT_EQ(shown(), "00:00:00 -");
    }
}

TEST_F(Player, SaysWhatTheDeviceOrTheDiskRefuses) {
    store.add("text.WAV", "no <b> sound");
    play("two.WAV");
    moveTo(50);
    play("text.WAV");
    EXPECT_EQ(seek().value(), 0) << "nothing of the one before is left";
    const QString words = state().toolTip();
    EXPECT_TRUE(words.contains(QLatin1String("cannot be played"))) << words.toStdString();
    panel_->retranslate();
    EXPECT_EQ(shown(), "00:00:00 Error");
    EXPECT_EQ(state().toolTip(), words) << "also in another language";
    media.takeSent();
    press(0);
    EXPECT_EQ(media.takeOpened(), 0) << "not before another dictation was chosen";

    play("two.WAV");
    EXPECT_EQ(shown().substr(9), "Playing");
    media.answers["play PBWave"].code = 326;
    media.answers["play PBWave from 50001 to 100000"].code = 326;
    moveTo(50);
    tick();
    EXPECT_EQ(shown(), "00:00:50 Error") << "the timer does not take it for stopped";
    media.answers.clear();
    panel_->playOrPause();
    EXPECT_EQ(shown(), "00:00:50 Playing");
    EXPECT_FALSE(state().toolTip().contains(QLatin1String("wave device")));
    {
        const FailingReads bad(store.native("one.WAV"), FailingReads::How::fail,
                               headerSize + 2 * bytesPerSecond + bytesPerSecond / 2);
        play("one.WAV");
        waitUntilShown("00:00:02 Error");
        EXPECT_TRUE(state().toolTip().contains(QLatin1String("Cannot read the specified file")));
        EXPECT_NEAR(position(), 2500, 150) << "where it was";
        EXPECT_EQ(level().value(), 0);
    }
    panel_->playOrPause();
    EXPECT_EQ(shown(), "00:00:02 Playing") << "the disk is back";
    {
        const FailingReads slow(store.native("two.WAV"), FailingReads::How::stall);
        selected = store.path("two.WAV");
        press(0);
        EXPECT_EQ(shown(), "00:00:00 Not ready");
        EXPECT_FALSE(panel_->isOpen()) << "the one before is heard no more";
    }
    waitUntilShown("00:00:00 Playing");
}

TEST_F(Player, GoesWhereItIsTold) {
    seek().setValue(1);
    panel_->skip(5);
    panel_->playAgain();
    EXPECT_TRUE(media.sent.empty()) << "nothing is open";
    const auto skip = [this](int by) { return [this, by] { panel_->skip(by); }; };
    const auto again = [this] { panel_->playAgain(); };
    const auto playOrPause = [this] { panel_->playOrPause(); };
    const auto playButton = [this] { press(0); };
    enum class It { plays, pauses, wasMovedInPause };
    // Where it is, how far it backs up, what is done, where it is then, all in seconds.
    const std::tuple<const char*, It, int, int, std::function<void()>, int, const char*> cases[] = {
        {"back", It::plays, 50, 0, skip(-5), 45, "Playing"},
        {"moved in a pause", It::pauses, 1, 0, skip(97), 98, "Stopped"},
        {"not to the end, where it would be closed", It::pauses, 98, 0, skip(5), 99, "Stopped"},
        {"pause", It::plays, 45, 3, playOrPause, 45, "Paused"},
        {"go on", It::pauses, 45, 3, playOrPause, 42, "Playing"},
        {"go on, not before the start", It::pauses, 1, 3, playOrPause, 0, "Playing"},
        {"play after a jump", It::wasMovedInPause, 40, 3, playButton, 37, "Playing"},
        {"play what plays", It::plays, 60, 3, playButton, 60, "Playing"},
        {"play, not before the start", It::wasMovedInPause, 1, 3, playButton, 0, "Playing"},
        {"play from its end", It::wasMovedInPause, 100, 3, playButton, 0, "Playing"},
        {"again", It::plays, 40, 0, again, 35, "Playing"},
        {"again from a pause", It::pauses, 40, 2, again, 38, "Playing"},
        {"again, not before the start", It::plays, 1, 2, again, 0, "Playing"}};
    for (const auto& [what, before, at, backUp, act, to, state] : cases) {
        SCOPED_TRACE(what);
        panel_->PlayerStop();
        choose(&PlayerChoices::backUpSeconds, backUp);
        play("one.WAV");
        if (before == It::wasMovedInPause)
            press(1);
        moveTo(at);
        if (before == It::pauses)
            press(1);
        act();
        EXPECT_EQ(shown().substr(9), state);
        EXPECT_NEAR(position(), to * 1000 + 700, 900);
    }
}

TEST_F(Player, LetsTheUserDragTheHandle) {
    panel_->resize(700, panel_->height());
    play("one.WAV");
    const QPoint middle = seek().rect().center();
    const QPoint place(seek().width() * 3 / 4, middle.y());
    QTest::mousePress(&seek(), Qt::LeftButton, {}, middle);
    EXPECT_NEAR(seek().value(), 32767 / 2, 1000) << "the handle comes to the pointer";
    QTest::mouseMove(&seek(), place);
    const int value = seek().value();
    EXPECT_NEAR(value, 32767 * 3 / 4, 1000);
    EXPECT_EQ(QToolTip::text(), FormatPlayTime(millisecondsAt(value), 1000));
    tick();
    tick();
    EXPECT_EQ(seek().value(), value) << "while he holds it, it is his";
    QTest::mouseRelease(&seek(), Qt::LeftButton, {}, place);
    tick();
    EXPECT_GT(seek().value(), value);
    QTest::keyClick(&seek(), Qt::Key_PageUp);
    EXPECT_NEAR(position(), millisecondsAt(value) + 5000, 2000) << "a twentieth";
}

// The way through the dictation is one thing: the shape, the handle and the times at both ends.
TEST_F(Player, IsMovedThroughByOneWidget) {
    panel_->resize(700, panel_->height());
    QTest::mouseClick(&seek(), Qt::LeftButton, {}, seek().rect().center());
    EXPECT_EQ(seek().value(), 0) << "there is nothing to move through";
    play("one.WAV");
    panel_->PlayerPauseResume();
    QTest::mouseClick(&seek(), Qt::RightButton, {}, {seek().width() / 2, 5});
    EXPECT_LT(seek().value(), 1000);
    for (const int percent : {0, 20, 80, 100}) {
        QTest::mouseClick(&seek(), Qt::LeftButton, {}, {seek().width() * percent / 100, 5});
        EXPECT_NEAR(position(), percent * 1000, 1500) << percent;
    }
    writeWave(store.native("short.WAV"), {}, sweep(8000, 80000));
    play("short.WAV");
    QTest::mouseClick(&seek(), Qt::LeftButton, {}, seek().rect().center());
    EXPECT_NEAR(position(), 5000, 900);
    play("one.WAV");
    moveTo(50);
    QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(&seek());
    EXPECT_EQ(spoken->role(), QAccessible::Slider);
    EXPECT_EQ(spoken->text(QAccessible::Value), QStringLiteral("00:00:50"));
    QAccessibleValueInterface& value = *spoken->valueInterface();
    EXPECT_NEAR(value.currentValue().toDouble(), 50, 1);
    EXPECT_NEAR(value.maximumValue().toDouble(), 100, 0.1);
    value.setCurrentValue(20);
    EXPECT_NEAR(position(), 20000, 100);
    seek().setStepsPerSecond(0.5);
    EXPECT_NEAR(value.maximumValue().toDouble(), 65534, 1) << "of half a day";
}

TEST_F(Player, HasAMenuOfSpeeds) {
    auto& button = child<QToolButton>(*panel_, "cmdSearchPlayerOptions");
    play("one.WAV");
    QTest::mousePress(&button, Qt::LeftButton);
    for (QAction* choice : button.findChildren<QAction*>())
        if (choice->text() == u"150 %")
            choice->trigger();
    popup().close();
    QTest::mouseRelease(&button, Qt::LeftButton);
    EXPECT_EQ(media.sent.back(), "set PBWave tempo 150");
    EXPECT_EQ(button.text(), QStringLiteral("150 %"));
    media.takeSent();
    play("two.WAV");
    EXPECT_EQ(std::count(media.sent.begin(), media.sent.end(), "set PBWave tempo 150"), 1)
        << "the speed is that of all dictations";
}

TEST_F(Player, IsLoudAtTheTop) {
    setVolume(16384);
    const QSignalSpy chosen(panel_.get(), &PlayerPanel::volumeChosen);
    panel_->createMixer();
    panel_->PlayerInitControls();
    EXPECT_TRUE(chosen.isEmpty()) << "by nobody";
    auto& slider = child<QSlider>(*panel_, "slSearchPlayerVolume");
    ASSERT_TRUE(slider.isEnabled());
    EXPECT_EQ(slider.value(), 65535 - 16384) << "shows what is set";
    QTest::keyClick(&slider, Qt::Key_Up);
    EXPECT_EQ(mixer().GetVolumeValue(), 16384 + 655) << "a hundredth louder";
    QTest::keyClick(&slider, Qt::Key_PageUp);
    EXPECT_EQ(mixer().GetVolumeValue(), 16384 + 655 + 3276) << "a twentieth";
    slider.setSliderDown(true);
    slider.setValue(0);
    EXPECT_EQ(QToolTip::text(), QStringLiteral("10"));
    EXPECT_EQ(mixer().GetVolumeValue(), 65535);
    slider.setValue(65535 / 2);
    EXPECT_EQ(QToolTip::text(), QStringLiteral("5"));
}

TEST_F(Player, SaysHours) {
    EXPECT_EQ(FormatPlayTime(3723999, 1000), QStringLiteral("01:02:03"));
    EXPECT_EQ(FormatPlayTime(360000, 1), QStringLiteral("100:00:00"));
}

TEST(ChoiceKeeper, WritesOnceForManyChanges) {
    std::string kept;
    ChoiceKeeper keeper({[&](const PlayerChoices& now, const PlayerChoices& before) {
                             kept += std::to_string(before.speedPercent) + ">" +
                                     std::to_string(now.speedPercent) + " ";
                         },
                         [&](std::int32_t volume) { kept += std::to_string(volume) + " "; }});
    const auto speed = [](std::int32_t percent) {
        PlayerChoices choices;
        choices.speedPercent = percent;
        return choices;
    };
    for (int i = 0; i < 100; ++i) {
        keeper.keep(i);
        keeper.keep(speed(101 + i), speed(100 + i));
    }
    EXPECT_EQ(kept, "");
    EXPECT_TRUE(QTest::qWaitFor([&] { return !kept.empty(); }));
    EXPECT_EQ(kept, "100>200 99 ");
    keeper.keep(7);
    keeper.keepNow();
    keeper.keepNow();
    EXPECT_EQ(kept, "100>200 99 7 ");
}

} // namespace
} // namespace ov
