// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "tests/platform/input/fake_inputs.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <condition_variable>
#include <fcntl.h>
#include <functional>
#include <linux/uinput.h>
#include <mutex>
#include <sys/ioctl.h>
#include <thread>
#include <unistd.h>
#include <utility>
#include <vector>

namespace ov::platform {
namespace {

constexpr InputKind pedalKind{0x1234, 0xabcd};
constexpr InputKind otherKind{0x1234, 0x0001};
const std::map<unsigned, std::set<unsigned>> pedalKeys{{EV_KEY, {KEY_A, KEY_B, KEY_F13}}};

// Keeps what it is told, as lines: "down 30", "up 30".
class HeardPresses final : public InputListener {
public:
    void pressed(const InputPress& press) override {
        const std::lock_guard lock(mutex_);
        lines_.push_back((press.down ? "down " : "up ") + std::to_string(press.control));
        changed_.notify_all();
    }
    void situationChanged(const InputSituation& situation) override {
        const std::lock_guard lock(mutex_);
        situation_ = situation;
        changed_.notify_all();
    }

    // Waits until that many lines are there; all that came, and none is left.
    std::string take(std::size_t count) {
        std::unique_lock lock(mutex_);
        changed_.wait_for(lock, std::chrono::seconds(20), [&] { return lines_.size() >= count; });
        std::string all;
        for (const std::string& line : std::exchange(lines_, {}))
            all += (all.empty() ? "" : ", ") + line;
        return all;
    }
    InputSituation situation() {
        const std::lock_guard lock(mutex_);
        return situation_;
    }

private:
    std::mutex mutex_;
    std::condition_variable changed_;
    std::vector<std::string> lines_;
    InputSituation situation_;
};

class InputDevicesTest : public ::testing::Test {
protected:
    void SetUp() override { watch(inputs.folder()); }

    void watch(const std::string& folder) {
        Status status;
        const InputModule* module = inputModule(status);
        ASSERT_NE(module, nullptr) << status.description();
        devices = module->watch(heard, folder, status);
        ASSERT_NE(devices, nullptr) << status.description();
    }
    void wishFor(InputWish wish) { devices->wish(std::move(wish)); }
    void plugInPedal(const std::string& file = "event3") {
        inputs.plugIn(file, {"Pedal", pedalKind, pedalKeys});
    }
    // Nothing else is told before a last press, which shows that all before it has been read.
    void expectHeard(std::string expected) {
        inputs.sendKey("event3", KEY_F13, 1);
        inputs.sendKey("event3", KEY_F13, 0);
        expected += expected.empty() ? "down 183, up 183" : ", down 183, up 183";
        const auto commas = static_cast<std::size_t>(std::ranges::count(expected, ','));
        EXPECT_EQ(heard.take(commas + 1), expected);
    }

    static bool waitUntil(const std::function<bool()>& state) {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
        while (!state() && std::chrono::steady_clock::now() < end)
            std::this_thread::sleep_for(std::chrono::milliseconds(2));
        return state();
    }

    // Until the names of the devices are these, each with ";" behind it and "!" before it where it
    // has a problem.
    bool waitForDevices(const std::string& names) {
        return waitUntil([&] {
            std::string known;
            for (const InputDevice& device : heard.situation().devices)
                known += (device.problem.ok() ? "" : "!") + device.name + ";";
            return known == names;
        });
    }

    tests::FakeInputs inputs;
    HeardPresses heard;
    std::unique_ptr<InputDevices> devices;
};

TEST_F(InputDevicesTest, TellsWhatGoesDownAndComesUp) {
    auto codes = pedalKeys;
    codes[EV_ABS] = {ABS_Y};
    inputs.plugIn("event3", {"Pedal", pedalKind, codes});
    wishFor({false, {pedalKind}, {}});
    ASSERT_TRUE(waitForDevices("Pedal;"));
    using Events = std::vector<std::array<int, 3>>; // type, code, value
    const std::tuple<const char*, Events, const char*> cases[] = {
        {"a press", {{EV_KEY, KEY_A, 1}, {EV_KEY, KEY_A, 0}}, "down 30, up 30"},
        {"one that repeats itself",
         {{EV_KEY, KEY_A, 1}, {EV_KEY, KEY_A, 2}, {EV_KEY, KEY_A, 2}, {EV_KEY, KEY_A, 0}},
         "down 30, up 30"},
        {"down twice, up twice",
         {{EV_KEY, KEY_A, 1}, {EV_KEY, KEY_A, 1}, {EV_KEY, KEY_A, 0}, {EV_KEY, KEY_A, 0}},
         "down 30, up 30"},
        {"up without a press", {{EV_KEY, KEY_B, 0}}, ""},
        {"values that no key has", {{EV_KEY, KEY_B, -1}, {EV_KEY, KEY_B, 77}}, ""},
        {"codes and types that nothing has",
         {{EV_KEY, 0xffff, 1}, {EV_ABS, 0xffff, 255}, {0x77, KEY_A, 1}, {EV_MSC, MSC_SCAN, 5}},
         ""},
        {"an axis to its ends",
         {{EV_ABS, ABS_Y, 255}, {EV_ABS, ABS_Y, 0}, {EV_ABS, ABS_Y, 128}},
         "down 65539, down 65538, up 65539, up 65538"},
        {"one that trembles",
         {{EV_ABS, ABS_Y, 193}, {EV_ABS, ABS_Y, 185}, {EV_ABS, ABS_Y, 195}, {EV_ABS, ABS_Y, 165}},
         "down 65539, up 65539"},
        {"one that is hardly moved", {{EV_ABS, ABS_Y, 180}, {EV_ABS, ABS_Y, 70}}, ""}};
    for (const auto& [what, events, told] : cases) {
        SCOPED_TRACE(what);
        for (const auto& [type, code, value] : events)
            inputs.send("event3", static_cast<unsigned>(type), static_cast<unsigned>(code), value);
        expectHeard(told);
    }
}

TEST_F(InputDevicesTest, AsksHowThingsStandWhereEventsWereLost) {
    plugInPedal();
    wishFor({true, {}, {}});
    ASSERT_TRUE(waitForDevices("Pedal;"));
    inputs.sendKey("event3", KEY_A, 1);
    EXPECT_EQ(heard.take(1), "down 30");
    inputs.setDown("event3", {KEY_B}); // A came up meanwhile, and nobody was told
    inputs.send("event3", EV_SYN, SYN_DROPPED, 0);
    inputs.send("event3", EV_SYN, SYN_REPORT, 0);
    const std::string told = heard.take(2);
    EXPECT_TRUE(told == "up 30, down 48" || told == "down 48, up 30") << told;
    expectHeard("");
}

TEST_F(InputDevicesTest, LiftsWhatIsPressedOnOneThatGoes) {
    wishFor({false, {pedalKind}, {}});
    for (const bool isBroken : {false, true}) {
        plugInPedal();
        ASSERT_TRUE(waitForDevices("Pedal;")) << "also one that comes later";
        inputs.sendKey("event3", KEY_A, 1);
        inputs.sendKey("event3", KEY_B, 1);
        EXPECT_EQ(heard.take(2), "down 30, down 48");
        if (isBroken)
            inputs.sendRubbish("event3");
        else
            inputs.pullOut("event3");
        EXPECT_EQ(heard.take(2), "up 30, up 48");
        EXPECT_TRUE(waitForDevices(""));
        if (isBroken)
            inputs.pullOut("event3");
    }
}

TEST_F(InputDevicesTest, ReadsOnlyWhatIsWishedFor) {
    plugInPedal();
    inputs.plugIn("event4", {"Keyboard", otherKind, pedalKeys});
    const auto mouseWith = [](unsigned button, const char* name) {
        return tests::FakeInputs::Device{name, otherKind, {{EV_KEY, {button}}, {EV_REL, {REL_X}}}};
    };
    inputs.plugIn("event5", mouseWith(BTN_MOUSE, "Mouse"));
    inputs.plugIn("event6", mouseWith(BTN_JOYSTICK - 1, "Mouse"));
    inputs.plugIn("event7", mouseWith(BTN_JOYSTICK, "Stick"));
    inputs.plugIn("event8", mouseWith(BTN_MOUSE - 1, "Knob"));
    inputs.plugIn("mouse0", {"No device of ours", otherKind, pedalKeys});
    wishFor({false, {pedalKind}, {}});
    ASSERT_TRUE(waitForDevices("Pedal;Keyboard;Stick;Knob;"));
    inputs.pullOut("event7");
    inputs.pullOut("event8");
    ASSERT_TRUE(waitForDevices("Pedal;Keyboard;"));
    inputs.sendKey("event4", KEY_B, 1);
    inputs.sendKey("event3", KEY_A, 1);
    EXPECT_EQ(heard.take(1), "down 30") << "what was typed elsewhere is nobody's business";
    inputs.pullOut("event4");
    wishFor({false, {otherKind}, {}});
    EXPECT_EQ(heard.take(1), "up 30");
    wishFor({true, {}, {}});
    inputs.sendKey("event3", KEY_B, 1);
    EXPECT_EQ(heard.take(1), "down 48");
    devices = nullptr;
    EXPECT_EQ(heard.take(1), "up 48");
}

TEST_F(InputDevicesTest, KeepsToItselfWhatIsGrabbed) {
    plugInPedal();
    inputs.setDown("event3", {KEY_A});
    wishFor({false, {pedalKind}, {pedalKind}});
    ASSERT_TRUE(waitForDevices("Pedal;"));
    inputs.sendKey("event3", KEY_B, 1);
    EXPECT_EQ(heard.take(1), "down 48");
    EXPECT_FALSE(inputs.isGrabbed("event3")) << "others would never hear that a key comes up";
    inputs.sendKey("event3", KEY_A, 0);
    inputs.sendKey("event3", KEY_B, 0);
    EXPECT_TRUE(waitUntil([this] { return inputs.isGrabbed("event3"); }));
    inputs.sendKey("event3", KEY_F13, 1);
    EXPECT_EQ(heard.take(2), "up 48, down 183");
    wishFor({false, {pedalKind}, {}});
    EXPECT_TRUE(waitUntil([this] { return !inputs.isGrabbed("event3"); }));
    inputs.sendKey("event3", KEY_F13, 0);
    EXPECT_EQ(heard.take(1), "up 183") << "it is still read";
    inputs.pullOut("event3");
    ASSERT_TRUE(waitForDevices(""));
    wishFor({false, {pedalKind}, {pedalKind}});
    plugInPedal();
    EXPECT_TRUE(waitUntil([this] { return inputs.isGrabbed("event3"); }));
}

TEST_F(InputDevicesTest, TellsWhyNothingIsReceived) {
    const tests::TemporaryStore store;
    const std::string later = store.native("later") + "/";
    watch(later);
    const auto isRefused = [this] { return !heard.situation().problem.ok(); };
    EXPECT_TRUE(waitUntil(isRefused));
    EXPECT_EQ(heard.situation().problem.kind(), Status::Kind::missing);
    fs::create_directory(store.native("later"));
    std::ofstream(store.native("later/event7")) << "no device";
    ASSERT_TRUE(waitForDevices("!" + later + "event7;")) << "looked at again";
    const InputDevice refused = heard.situation().devices.front();
    EXPECT_TRUE(refused.problem.description().starts_with(later + "event7: "))
        << refused.problem.description();
    fs::remove_all(store.native("later"));
    EXPECT_TRUE(waitUntil(isRefused)) << "it may go again";
}

TEST_F(InputDevicesTest, NamesControlsAsTheLibraryDoes) {
    Status status;
    const InputModule* module = inputModule(status);
    ASSERT_NE(module, nullptr);
    std::string names;
    for (const std::uint32_t control :
         {std::uint32_t{KEY_F13}, std::uint32_t{BTN_TRIGGER}, 65538U, 65539U, 4000000000U})
        names += module->controlName(control) + " ";
    EXPECT_EQ(names, "F13 TRIGGER Y- Y+ 4000000000 ");
}

// The whole way through the kernel, where it lets a test make devices.
TEST_F(InputDevicesTest, ReadsADeviceOfTheKernel) {
    const int handle = open("/dev/uinput", O_WRONLY | O_NONBLOCK | O_CLOEXEC);
    if (handle < 0)
        GTEST_SKIP() << "/dev/uinput cannot be opened: the kernel gives tests no devices";
    uinput_setup setup{{BUS_USB, pedalKind.vendor, pedalKind.product, 1}, "OVSearch test pedal", 0};
    ASSERT_EQ(ioctl(handle, UI_SET_EVBIT, EV_KEY), 0);
    ASSERT_EQ(ioctl(handle, UI_SET_KEYBIT, KEY_F13), 0);
    ASSERT_EQ(ioctl(handle, UI_DEV_SETUP, &setup), 0);
    watch("");
    wishFor({false, {pedalKind}, {}});
    ASSERT_EQ(ioctl(handle, UI_DEV_CREATE), 0);
    ASSERT_TRUE(waitUntil([this] {
        const auto known = heard.situation().devices;
        return std::ranges::find(known, pedalKind, &InputDevice::kind) != known.end();
    }));
    const input_event events[] = {{{}, EV_KEY, KEY_F13, 1}, {{}, EV_SYN, SYN_REPORT, 0}};
    ASSERT_EQ(write(handle, events, sizeof events), static_cast<ssize_t>(sizeof events));
    EXPECT_EQ(heard.take(1), "down 183");
    close(handle); // as if it were pulled out
    EXPECT_EQ(heard.take(1), "up 183");
}

} // namespace
} // namespace ov::platform
