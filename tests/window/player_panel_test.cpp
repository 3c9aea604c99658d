// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "playback/panel/player_panel.h"
#include "playback/panel/player_texts.h"
#include "tests/recording_media.h"
#include "tests/window/window_fixture.h"

#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalSpy>

namespace ov {
namespace {

using tests::child;

const std::string openOne = "open one.WAV type waveaudio Alias PBWave";
const std::string openTwo = "open two.WAV type waveaudio Alias PBWave";

// The panel before a device that only answers: 100 seconds long, a thousand units a second.
class Player : public tests::WindowTest {
public:
    Player() {
        for (const char* name : {"one.WAV", "two.WAV"}) {
            store.add(name);
            media.shortPaths[store.path(name)] = name;
        }
        set("status PBWave length", "100000");
        set("status PBWave speed", "1000");
        atPosition("0", "stopped");
        panel_.setSelection([this] { return selected; });
        panel_.createMixer();
        panel_.PlayerInitControls();
        panel_.show();
    }
    ~Player() override {
        panel_.releaseMixer();
        clsMixer mixer; // one for the process
        mixer.Init_MixerControl();
        mixer.Init_VolumeControl();
        mixer.SetVolumeValue(mixer.VolumeMaximum());
    }
    Player(const Player&) = delete;
    Player& operator=(const Player&) = delete;

protected:
    void set(const char* command, const char* reply) { media.answers[command] = {0, reply}; }
    void atPosition(const char* position, const char* mode) {
        set("status PBWave position", position);
        set("status PBWave mode", mode);
    }
    void press(int button) {
        child<QPushButton>(panel_, qPrintable(QStringLiteral("cmdSearchPlayer(%1)").arg(button)))
            .click();
    }
    QSlider& seek() { return child<QSlider>(panel_, "slSearchPlayerSeek"); }
    // What moved the device since the last time; questions are left out.
    std::string moves() {
        std::string all;
        for (const std::string& command : media.sent)
            if (!command.starts_with("status") && !command.starts_with("set PBWave time") &&
                !command.starts_with("set PBWave output"))
                all.append(all.empty() ? "" : "; ").append(command);
        media.sent.clear();
        return all;
    }
    std::string shown() {
        return child<QLabel>(panel_, "lblSeachPlayerStatus").text().toStdString() + " " +
               child<QProgressBar>(panel_, "prgSearchPlayerStatus").format().toStdString();
    }
    // Waits for what the status timer does when the device has come to that position.
    void arriveAt(const char* position, const char* mode) {
        atPosition(position, mode);
        auto* timer = panel_.findChild<QTimer*>(QStringLiteral("timerSearchPlayerStatus"));
        QSignalSpy ticks(timer, &QTimer::timeout);
        EXPECT_TRUE(ticks.wait());
    }
    tests::RecordingMedia media;
    std::string selected;
    PlayerPanel panel_{nullptr};
};

TEST_F(Player, PlaysPausesAndStopsTheSelectedDictation) {
    press(0);
    press(1);
    press(2);
    EXPECT_EQ(moves(), "") << "nothing is selected, nothing is open";

    selected = store.path("gone.WAV");
    press(0);
    EXPECT_EQ(moves(), "") << "a file that is gone is not opened";

    selected = store.path("one.WAV");
    press(0);
    EXPECT_EQ(moves(), openOne + "; play PBWave from 0 to 100000");
    EXPECT_EQ(child<QLabel>(panel_, "lblSearchPlayerLength").text(), QStringLiteral("00:01:40"));
    arriveAt("61000", "playing");
    EXPECT_EQ(shown(), "00:01:01 Playing");
    EXPECT_EQ(seek().value(), 19987);

    press(1);
    EXPECT_EQ(moves(), "pause PBWave");
    atPosition("61000", "paused");
    press(1);
    EXPECT_EQ(moves(), "resume PBWave");
    press(0);
    EXPECT_EQ(moves(), "play PBWave from 61000 to 100000") << "the open file is not opened again";

    selected = store.path("two.WAV");
    press(0);
    EXPECT_EQ(moves(), "close PBWave; " + openTwo + "; play PBWave from 61000 to 100000");
    press(2);
    EXPECT_EQ(moves(), "stop PBWave; seek PBWave to 0; close PBWave");
    EXPECT_EQ(shown(), "00:00:00 -");
    press(2);
    EXPECT_EQ(moves(), "") << "twice is once";
}

TEST_F(Player, ClosesAtTheEndOfTheDictation) {
    selected = store.path("one.WAV");
    press(0);
    moves();
    arriveAt("100000", "stopped");
    EXPECT_EQ(moves(), "stop PBWave; seek PBWave to 0; close PBWave");
    EXPECT_FALSE(panel_.isOpen());
}

TEST_F(Player, ShowsWhatTheDeviceRefuses) {
    media.errors[275] = "no such thing <b>";
    selected = store.path("two.WAV");
    press(0);
    arriveAt("61000", "playing");
    selected = store.path("one.WAV");
    media.answers[openOne].code = 275;
    press(0);
    EXPECT_EQ(shown(), "00:00:00 Error");
    EXPECT_EQ(seek().value(), 0) << "nothing of the one before is left";
    EXPECT_EQ(child<QProgressBar>(panel_, "prgSearchPlayerStatus").toolTip(),
              QStringLiteral("<qt>no such thing &lt;b&gt;</qt>"));
    moves();
    press(0);
    EXPECT_EQ(moves(), "") << "not before another dictation was chosen";
    atPosition("0", "stopped");
    selected = store.path("two.WAV");
    media.answers["play PBWave from 0 to 100000"].code = 275;
    press(0);
    EXPECT_EQ(shown(), "00:00:00 Error");
}

TEST_F(Player, MovesThroughTheDictation) {
    seek().setValue(1);
    EXPECT_EQ(moves(), "") << "nothing is open";
    selected = store.path("one.WAV");
    press(0);
    moves();
    atPosition("50000", "playing");
    seek().setValue(16384);
    EXPECT_EQ(moves(), "seek PBWave to 50001; play PBWave");
    panel_.skip(5);
    EXPECT_EQ(moves(), "seek PBWave to 55000; play PBWave");
    atPosition("98000", "paused");
    panel_.skip(5);
    EXPECT_EQ(moves(), "seek PBWave to 100000") << "not beyond the end, and not playing";
    panel_.setBackUpSeconds(3);
    atPosition("61000", "paused");
    panel_.playOrPause();
    EXPECT_EQ(moves(), "seek PBWave to 58000; play PBWave");
    atPosition("1000", "paused");
    panel_.playOrPause();
    EXPECT_EQ(moves(), "seek PBWave to 0; play PBWave");
    atPosition("1000", "playing");
    panel_.playOrPause();
    EXPECT_EQ(moves(), "pause PBWave");
    panel_.setSpeedPercent(150);
    EXPECT_EQ(media.sent.back(), "set PBWave tempo 150");
}

TEST_F(Player, HoldsAnEmptyDictation) {
    set("status PBWave length", "0");
    selected = store.path("one.WAV");
    panel_.PlayerOpenFile(selected);
    EXPECT_EQ(seek().maximum(), 1);
    EXPECT_EQ(shown().substr(0, 8), "00:00:00");
}

TEST_F(Player, IsLoudAtTheTop) {
    auto& slider = child<QSlider>(panel_, "slSearchPlayerVolume");
    ASSERT_TRUE(slider.isEnabled());
    clsMixer mixer;
    mixer.Init_MixerControl();
    mixer.Init_VolumeControl();
    slider.setValue(slider.minimum());
    EXPECT_EQ(mixer.GetVolumeValue(), mixer.VolumeMaximum());
    slider.setValue(slider.maximum());
    EXPECT_EQ(mixer.GetVolumeValue(), mixer.VolumeMinimum());
}

TEST_F(Player, SaysTimesAndModes) {
    EXPECT_EQ(FormatPlayTime(3723999, 1000), QStringLiteral("01:02:03"));
    EXPECT_EQ(FormatPlayTime(360000, 1), QStringLiteral("100:00:00"));
    EXPECT_EQ(FormatPlayTime(5000, 0), QStringLiteral("00:00:00"));
    EXPECT_EQ(MciModeText(""), QStringLiteral("-"));
    EXPECT_EQ(MciModeText("not ready"), QStringLiteral("Not Ready"));
    EXPECT_EQ(MciModeText("dancing"), QString());
}

} // namespace
} // namespace ov
