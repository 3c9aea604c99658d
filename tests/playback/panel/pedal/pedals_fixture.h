// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/loaded_module.h"
#include "playback/panel/pedal/pedal_desk.h"
#include "tests/platform/input/fake_inputs.h"

#include <gtest/gtest.h>

#include <QTest>
#include <linux/input-event-codes.h>

namespace ov::tests {

// Devices of the test's own, which the program's library reads.
class FakePedals {
public:
    static constexpr platform::InputKind kind{0x1234, 0xabcd};

    FakePedals() {
        folder_ = inputs.folder();
        static constexpr platform::InputModule module{watch, name};
        platform::installInputModule(&module);
    }
    ~FakePedals() { platform::installInputModule(nullptr); }

    // Waits until it is known.
    void plugIn() {
        const std::size_t before = desk->situation().devices.size();
        inputs.plugIn("event3", {"Pedal", kind, {{EV_KEY, {KEY_A, KEY_B, KEY_C, KEY_D, KEY_E}}}});
        EXPECT_TRUE(
            QTest::qWaitFor([&] { return desk->situation().devices.size() > before; }, 20000));
    }
    void down(unsigned key) { inputs.sendKey("event3", key, 1); }
    void up(unsigned key) { inputs.sendKey("event3", key, 0); }
    // Waits until it has been heard and has done what it does.
    void tread(unsigned key) {
        int heard = 0; // its press, then its release
        const auto connection = QObject::connect(
            desk.get(), &PedalDesk::received, [&](const platform::InputPress& press) {
                if (press.control == key && press.down == (heard == 0))
                    ++heard;
            });
        down(key);
        up(key);
        EXPECT_TRUE(QTest::qWaitFor([&] { return heard > 1; }, 20000));
        QObject::disconnect(connection);
    }

    FakeInputs inputs;
    std::shared_ptr<PedalDesk> desk = PedalDesk::shared();

private:
    static inline std::string folder_;

    static const platform::InputModule* library() {
        platform::Status status;
        const auto* module = platform::loadModule<platform::InputModule>(status);
        EXPECT_NE(module, nullptr) << status.description();
        return module;
    }
    static std::unique_ptr<platform::InputDevices>
    watch(platform::InputListener& listener, const std::string&, platform::Status& status) {
        return library()->watch(listener, folder_, status);
    }
    static std::string name(std::uint32_t control) { return library()->controlName(control); }
};

} // namespace ov::tests
