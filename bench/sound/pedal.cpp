// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// How soon a foot is heard: from what a pedal's device says, through the library that reads it and
// the player's window, to what a sound server of its own plays.

#include "bench/sound/recording.h"
#include "platform/loaded_module.h"
#include "playback/panel/pedal/pedal_desk.h"
#include "playback/panel/player_panel.h"
#include "tests/platform/input/fake_inputs.h"
#include "tests/wave_files.h"

#include <QApplication>
#include <algorithm>
#include <cstdio>
#include <linux/input-event-codes.h>
#include <string>
#include <thread>
#include <vector>

namespace {

using namespace ov::bench;

constexpr int rate = 16000;
constexpr ov::platform::InputKind kind{0x1234, 0xabcd};
constexpr const char* device = "event3";

std::string folder; // of the devices

std::unique_ptr<ov::platform::InputDevices>
watch(ov::platform::InputListener& listener, const std::string&, ov::platform::Status& status) {
    return ov::platform::loadModule<ov::platform::InputModule>(status)->watch(listener, folder,
                                                                              status);
}

// Every other time the output has been closed meanwhile.
void tread(ov::tests::FakeInputs& inputs, const Recorder& recorder) {
    Figures sound[2];
    Figures silence;
    for (int i = 0; i < 20; ++i) {
        pause(i % 2 == 0 ? 800 : 100);
        std::size_t start = recorder.count();
        auto asked = Clock::now();
        inputs.sendKey(device, KEY_A, 1);
        sound[i % 2].values.push_back(
            milliseconds(recorder.arrival(waitForSound(recorder, start)) - asked));
        pause(300);
        start = recorder.count();
        asked = Clock::now();
        inputs.sendKey(device, KEY_A, 0);
        const std::size_t last = waitForSilence(recorder, start);
        silence.values.push_back(last > start ? milliseconds(recorder.arrival(last - 1) - asked)
                                              : 0);
    }
    sound[0].print("press to first sound", "at most 60");
    sound[1].print("the same, soon after the last", "at most 60");
    silence.print("release to silence", "at most 50");
}

void measure(int argc, char** argv) {
    const Recorder recorder;
    const ov::tests::TemporaryStore store;
    ov::tests::writeWave(store.native("tone.WAV"), {SF_FORMAT_PCM_16, rate},
                         std::vector<float>(std::size_t{600} * rate, 0.25F));
    const QApplication application(argc, argv);
    ov::tests::FakeInputs inputs;
    folder = inputs.folder();
    static constexpr ov::platform::InputModule module{watch, nullptr};
    ov::platform::installInputModule(&module);
    ov::PlayerPanel player(nullptr);
    player.setSelection([&store] { return store.path("tone.WAV"); });
    ov::PlayerChoices choices;
    choices.backUpSeconds = 1;
    player.setChoices(choices);
    player.show();
    const auto desk = ov::PedalDesk::shared();
    ov::PedalAssignments assignments;
    assignments.assign({kind, KEY_A}, ov::PedalAction::playWhileHeld);
    QObject::connect(desk.get(), &ov::PedalDesk::changed, desk.get(), [&] {
        if (desk->situation().devices.empty())
            return;
        desk->disconnect();
        std::thread([&] {
            tread(inputs, recorder);
            QMetaObject::invokeMethod(qApp, &QCoreApplication::quit, Qt::QueuedConnection);
        }).detach();
    });
    desk->setAssignments(assignments);
    inputs.plugIn(device, {"Pedal", kind, {{EV_KEY, {KEY_A}}}});
    QApplication::exec();
    player.PlayerStop();
}

} // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    ov::tests::SoundServer server;
    if (!server.isRunning()) {
        std::puts("no sound server can be started");
        return 1;
    }
    measure(argc, argv);
    return 0;
}
