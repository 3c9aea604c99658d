// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "playback/modMultimedia.h"
#include "playback/panel/player_panel.h"
#include "tests/scripted_media.h"
#include "tests/wave_files.h"
#include "tests/window/window_fixture.h"

#include <QProgressBar>
#include <QSignalSpy>

namespace ov {

// The panel before the real device, which plays into an output that throws all away. "one.WAV" and
// "two.WAV" last a hundred seconds.
class Player : public WindowTest {
public:
    Player() {
        static const std::vector<float> sound = sweep(8000, 800000);
        for (const char* name : {"one.WAV", "two.WAV"})
            writeWave(store.native(name), {}, sound);
        makePanel();
    }
    ~Player() override {
        panel_ = nullptr;
        setVolume(65535); // one for the process
    }

protected:
    void makePanel() {
        panel_ = std::make_unique<PlayerPanel>(nullptr);
        panel_->setSelection([this] { return selected; });
        panel_->createMixer();
        panel_->PlayerInitControls();
        panel_->show();
        panel_->setFocus(); // on a button, away from what is looked at
    }
    static clsMixer& mixer() {
        static clsMixer theMixer;
        static const bool ready = theMixer.Init_MixerControl() && theMixer.Init_VolumeControl();
        EXPECT_TRUE(ready);
        return theMixer;
    }
    static void setVolume(int value) { EXPECT_TRUE(mixer().SetVolumeValue(value)); }
    // As the user would, of one of the player's choices.
    template <typename Value>
    void choose(Value PlayerChoices::*choice, const std::type_identity_t<Value>& value) {
        PlayerChoices choices = panel_->choices();
        choices.*choice = value;
        panel_->setChoices(choices);
    }
    void press(int button) {
        clickOn(*panel_, ("cmdSearchPlayer(" + std::to_string(button) + ")").c_str());
    }
    void play(const char* name) {
        selected = store.path(name);
        press(0);
        waitFor([this] { return state().format() != QLatin1String("Not ready"); });
    }
    SeekSlider& seek() { return child<SeekSlider>(*panel_, "slSearchPlayerSeek"); }
    QProgressBar& state() { return child<QProgressBar>(*panel_, "prgSearchPlayerStatus"); }
    QProgressBar& level() { return child<QProgressBar>(*panel_, "prgSearchPlayerVU"); }
    std::string shown() {
        return child<QLabel>(*panel_, "lblSeachPlayerStatus").text().toStdString() + " " +
               state().format().toStdString();
    }
    static int position() { return modMultimedia::MciGetPosition("PBWave"); }
    // Moves a playing device, so that it is within a second from there on.
    static int millisecondsAt(int value) { return static_cast<int>(value * (100000 / 32767.0)); }
    void moveTo(int seconds) { seek().setValue((seconds * 10 + 5) * 32767 / 1000); }
    static void waitFor(const std::function<bool()>& condition) {
        EXPECT_TRUE(QTest::qWaitFor(condition, 60000));
    }
    void waitUntilShown(const std::string& text) {
        waitFor([&] { return shown() == text; });
        EXPECT_EQ(shown(), text);
    }
    void tick() {
        auto* timer = panel_->findChild<QTimer*>(QStringLiteral("timerSearchPlayerStatus"));
        QSignalSpy ticks(timer, &QTimer::timeout);
        EXPECT_TRUE(ticks.wait());
    }

    const Environment silent_{"SDL_AUDIODRIVER", "dummy"};
    ScriptedMedia media;
    std::string selected;
    std::unique_ptr<PlayerPanel> panel_;
};

} // namespace ov
