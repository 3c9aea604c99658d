// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "platform/mixer.h"
#include "playback/clsMixer.h"

#include <gtest/gtest.h>

#include <cstring>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace ov {
namespace {

using namespace platform;

template <typename... Parts>
std::string textOf(Parts... parts) {
    std::ostringstream text;
    (text << ... << parts);
    return text.str();
}

// Devices with lines and values of the test's choice; keeps every call as a line.
class RecordingMixer final : public MixerCalls {
public:
    RecordingMixer() : before_(installMixerCalls(this)) {}
    ~RecordingMixer() override { installMixerCalls(before_); }
    RecordingMixer(const RecordingMixer&) = delete;
    RecordingMixer& operator=(const RecordingMixer&) = delete;

    std::uint32_t getNumDevs() override {
        calls.emplace_back("count");
        return static_cast<std::uint32_t>(names.size());
    }
    std::uint32_t open(MixerHandle& handle, std::uint32_t device, std::uint32_t callback,
                       std::uint32_t instance, std::uint32_t flags) override {
        calls.push_back(textOf("open ", device, ' ', callback, ' ', instance, ' ', flags));
        if (device >= names.size() || names[device] == "busy")
            return 2;
        handle = 70 + device;
        return 0;
    }
    std::uint32_t getDevCaps(MixerHandle handle, MixerCaps& caps, std::uint32_t size) override {
        calls.push_back(textOf("caps ", handle, " size ", size));
        const std::string& name = names.at(handle - 70);
        std::copy(name.begin(), name.end(), caps.name.begin());
        return 0;
    }
    std::uint32_t getLineInfo(MixerHandle handle, MixerLine& line, std::uint32_t flags) override {
        calls.push_back(textOf("line ", handle, " size ", line.size, " component ", line.component,
                               " flags ", flags));
        line.line = line.component + 500;
        return lines.contains(line.component) ? 0 : 1024;
    }
    std::uint32_t getLineControls(MixerHandle handle, MixerLineControls& controls,
                                  std::uint32_t flags) override {
        calls.push_back(textOf("controls ", handle, " size ", controls.size, " line ",
                               controls.line, " type ", controls.controlType, " count ",
                               controls.count, " each ", controls.controlSize, " flags ", flags));
        const auto& types = lines[controls.line - 500];
        if (!types.contains(controls.controlType))
            return 1025;
        MixerControl control;
        control.size = 152;
        control.id = controls.controlType == mixer_control::volume ? 11 : 12;
        control.minimum = control.id == 11 ? 5 : -100;
        control.maximum = 100;
        EXPECT_EQ(blocks.at(controls.controls).size(), 152U);
        std::memcpy(blocks[controls.controls].data(), &control, sizeof control);
        return 0;
    }
    std::uint32_t getControlDetails(MixerHandle handle, MixerControlDetails& details,
                                    std::uint32_t flags) override {
        calls.push_back(recordLine("get", handle, details, flags));
        std::memcpy(blocks.at(details.details).data(), &values[details.control], 4);
        return failing ? 11 : 0;
    }
    std::uint32_t setControlDetails(MixerHandle handle, MixerControlDetails& details,
                                    std::uint32_t flags) override {
        calls.push_back(recordLine("set", handle, details, flags));
        std::memcpy(&values[details.control], blocks.at(details.details).data(), 4);
        return failing ? 11 : 0;
    }
    std::uint32_t close(MixerHandle handle) override {
        calls.push_back(textOf("close ", handle));
        return 0;
    }
    MemoryHandle globalAlloc(std::uint32_t, std::uint32_t bytes) override {
        blocks[++lastBlock_].resize(bytes);
        return lastBlock_;
    }
    std::byte* globalLock(MemoryHandle block) override { return blocks.at(block).data(); }
    void globalFree(MemoryHandle block) override { EXPECT_EQ(blocks.erase(block), 1U); }

    std::vector<std::string> takeCalls() { return std::exchange(calls, {}); }

    std::vector<std::string> names; // of the devices; "busy" cannot be opened
    std::map<std::uint32_t, std::set<std::uint32_t>> lines; // control types by component
    std::map<std::uint32_t, std::int32_t> values;           // by control
    bool failing = false;
    std::vector<std::string> calls;
    std::map<MemoryHandle, std::vector<std::byte>> blocks;

private:
    static std::string recordLine(const char* what, MixerHandle handle,
                                  const MixerControlDetails& details, std::uint32_t flags) {
        return textOf(what, ' ', handle, " size ", details.size, " control ", details.control,
                      " channels ", details.channels, " items ", details.multipleItems, " each ",
                      details.detailSize, " flags ", flags);
    }

    MixerCalls* before_;
    MemoryHandle lastBlock_ = 0;
};

using Calls = std::vector<std::string>;

TEST(Mixer, ChoosesADevice) {
    struct Case {
        const char* name;
        std::vector<std::string> devices;
        std::string wanted;
        std::string chosen; // "" none
        Calls calls;
    };
    const std::vector<Case> cases = {
        {"other letter case, blanks around",
         {"One", " sb16 MIXER [220] ", "Three"},
         "SB16 Mixer [220]",
         "sb16 MIXER [220]",
         {"count", "open 0 0 0 0", "caps 70 size 48", "close 70", "open 1 0 0 0", "caps 71 size 48",
          "caps 71 size 48"}},
        {"one that is busy is passed over",
         {"busy", "B"},
         "b",
         "B",
         {"count", "open 0 0 0 0", "open 1 0 0 0", "caps 71 size 48", "caps 71 size 48"}},
        {"the first when none has the name",
         {"A"},
         "SB16 Mixer [220]",
         "A",
         {"count", "open 0 0 0 0", "caps 70 size 48", "close 70", "open 0 0 0 0",
          "caps 70 size 48"}},
        {"the first without a name", {"A"}, "", "A", {"open 0 0 0 0", "caps 70 size 48"}},
        {"no device", {}, "SB16 Mixer [220]", "", {"count", "open 0 0 0 0"}}};
    for (const Case& test : cases) {
        SCOPED_TRACE(test.name);
        RecordingMixer calls;
        calls.names = test.devices;
        clsMixer mixer;
        mixer.DefaultMixerName(test.wanted);
        EXPECT_EQ(mixer.Init_MixerControl(), !test.chosen.empty());
        EXPECT_EQ(mixer.CurrentMixerName(), test.chosen);
        EXPECT_EQ(calls.calls, test.calls);
        if (test.chosen.empty()) {
            EXPECT_EQ(mixer.GetVolumeValue() + mixer.GetVUMeterValue(), 0);
            EXPECT_FALSE(mixer.SetVolumeValue(1));
            EXPECT_EQ(calls.calls, test.calls) << "asked without a handle";
        }
    }
}

TEST(Mixer, FindsControlsAndTheirValues) {
    RecordingMixer calls;
    calls.names = {"A"};
    calls.lines = {{mixer_line::speakers, {mixer_control::volume, mixer_control::peakMeter}},
                   {mixer_line::waveOutput, {mixer_control::peakMeter}}};
    {
        clsMixer mixer;
        ASSERT_TRUE(mixer.Init_MixerControl());
        calls.takeCalls();
        EXPECT_TRUE(mixer.Init_VolumeControl());
        EXPECT_EQ(calls.takeCalls(),
                  (Calls{"line 70 size 168 component 4104 flags 3",
                         "controls 70 size 24 line 4604 type 1342373889 count 1 each 152 flags 2",
                         "line 70 size 168 component 4 flags 3",
                         "controls 70 size 24 line 504 type 1342373889 count 1 each 152 flags 2"}));
        EXPECT_TRUE(mixer.Init_VUMeterControl());
        EXPECT_EQ(calls.takeCalls(),
                  (Calls{"line 70 size 168 component 4104 flags 3",
                         "controls 70 size 24 line 4604 type 268566529 count 1 each 152 flags 2"}));
        EXPECT_EQ(mixer.VolumeMinimum(), 5);
        EXPECT_EQ(mixer.VolumeMaximum(), 100);
        EXPECT_EQ(mixer.VUMeterMinimum(), -100);
        EXPECT_EQ(mixer.VUMeterMaximum(), 100);

        calls.values = {{11, 0}, {12, -77}};
        EXPECT_TRUE(mixer.SetVolumeValue(66));
        EXPECT_EQ(mixer.GetVolumeValue(), 66);
        EXPECT_EQ(mixer.GetVUMeterValue(), -77);
        EXPECT_EQ(calls.takeCalls(),
                  (Calls{"set 70 size 24 control 11 channels 1 items 0 each 4 flags 0",
                         "get 70 size 24 control 11 channels 1 items 0 each 4 flags 0",
                         "get 70 size 24 control 12 channels 1 items 0 each 4 flags 0"}));
        calls.failing = true;
        EXPECT_FALSE(mixer.SetVolumeValue(1));
        EXPECT_EQ(mixer.GetVolumeValue() + mixer.GetVUMeterValue(), 0);

        calls.lines.clear();
        EXPECT_FALSE(mixer.Init_VolumeControl());
        EXPECT_EQ(mixer.VolumeMaximum(), 0) << "bounds of a control that is gone";
        EXPECT_EQ(calls.blocks.size(), 1U) << "only the buffer for reading values";
    }
    EXPECT_TRUE(calls.blocks.empty());
    EXPECT_EQ(std::count(calls.calls.begin(), calls.calls.end(), "close 70"), 0);
}

// The system's own mixer answers wrong questions as programs expect it.
TEST(Mixer, SystemMixer) {
    MixerCalls& mixer = systemMixerCalls();
    MixerHandle handle = 0;
    EXPECT_EQ(mixer.open(handle, mixer.getNumDevs(), 0, 0, 0), mixer_result::badDevice);
    ASSERT_EQ(mixer.open(handle, 0, 0, 0, 0), mixer_result::success);
    const auto line = [&](std::uint32_t size, std::uint32_t component) {
        MixerLine record;
        record.size = size;
        record.component = component;
        return mixer.getLineInfo(handle, record, 3) * 10 + (record.controls == 2 ? 1 : 0);
    };
    EXPECT_EQ(line(168, mixer_line::waveOutput), 1U);
    EXPECT_EQ(line(164, mixer_line::waveOutput), mixer_result::invalidParameter * 10);
    EXPECT_EQ(line(168, 0x1003), mixer_result::invalidLine * 10);

    clsMixer user;
    ASSERT_TRUE(user.Init_MixerControl() && user.Init_VolumeControl() &&
                user.Init_VUMeterControl());
    EXPECT_EQ(user.VolumeMaximum(), 65535);
    EXPECT_EQ(user.VUMeterMinimum(), -32768);
    for (const std::int32_t value : {0, 1, 32768, 65535}) {
        EXPECT_TRUE(user.SetVolumeValue(value));
        EXPECT_EQ(user.GetVolumeValue(), value);
    }
    EXPECT_FALSE(user.SetVolumeValue(65536) || user.SetVolumeValue(-1));
    EXPECT_EQ(user.GetVolumeValue(), 65535);
    EXPECT_EQ(user.GetVUMeterValue(), 0) << "nothing is played";

    const MemoryHandle small = mixer.globalAlloc(0, 3);
    const auto details = [&](std::uint32_t size, std::uint32_t control, MemoryHandle block) {
        MixerControlDetails record{size, control, 1, 0, 4, block};
        return mixer.getControlDetails(handle, record, 0);
    };
    const MemoryHandle block = mixer.globalAlloc(0, 4);
    EXPECT_EQ(details(24, 1, block), mixer_result::success);
    EXPECT_EQ(details(20, 1, block), mixer_result::invalidParameter);
    EXPECT_EQ(details(24, 9, block), mixer_result::invalidControl);
    EXPECT_EQ(details(24, 1, small), mixer_result::invalidParameter);
    mixer.globalFree(small);
    mixer.globalFree(block);
}

} // namespace
} // namespace ov
