// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "platform/mixer.h"
#include "playback/clsMixer.h"

#include <gtest/gtest.h>

#include <cstring>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace ov {
namespace {

using namespace platform;

// Devices with lines and values of the test's choice. Refuses records and flags that are not as
// mixers expect them.
class FakeMixer final : public MixerCalls {
public:
    FakeMixer() : before_(installMixerCalls(this)) {}
    ~FakeMixer() override { installMixerCalls(before_); }
    FakeMixer(const FakeMixer&) = delete;
    FakeMixer& operator=(const FakeMixer&) = delete;

    std::uint32_t getNumDevs() override { return static_cast<std::uint32_t>(names.size()); }
    std::uint32_t open(MixerHandle& handle, std::uint32_t device, std::uint32_t callback,
                       std::uint32_t instance, std::uint32_t flags) override {
        if (device >= names.size() || names[device] == "busy" || callback + instance + flags > 0)
            return mixer_result::badDevice;
        handle = 70 + device;
        opened.insert(handle);
        return 0;
    }
    std::uint32_t getDevCaps(MixerHandle handle, MixerCaps& caps, std::uint32_t size) override {
        if (size != 48 || !opened.contains(handle))
            return mixer_result::invalidParameter;
        const std::string& name = names.at(handle - 70);
        std::copy(name.begin(), name.end(), caps.name.begin());
        return 0;
    }
    std::uint32_t getLineInfo(MixerHandle handle, MixerLine& line, std::uint32_t flags) override {
        if (!opened.contains(handle) || line.size != 168 || flags != 3)
            return mixer_result::invalidParameter;
        line.line = line.component + 500;
        return lines.contains(line.component) ? 0 : mixer_result::invalidLine;
    }
    std::uint32_t getLineControls(MixerHandle handle, MixerLineControls& controls,
                                  std::uint32_t flags) override {
        if (!opened.contains(handle) || controls.size != 24 || controls.count != 1 ||
            controls.controlSize != 152 || blocks.at(controls.controls).size() != 152 || flags != 2)
            return mixer_result::invalidParameter;
        if (!lines[controls.line - 500].contains(controls.controlType))
            return mixer_result::invalidControl;
        MixerControl control;
        const bool ofSpeakers = controls.line - 500 == mixer_line::speakers;
        control.id = controls.controlType == mixer_control::volume ? 11 : ofSpeakers ? 13 : 12;
        control.minimum = control.id == 11 ? 5 : -100;
        control.maximum = 100;
        std::memcpy(blocks[controls.controls].data(), &control, sizeof control);
        return 0;
    }
    std::uint32_t getControlDetails(MixerHandle handle, MixerControlDetails& details,
                                    std::uint32_t flags) override {
        std::memcpy(blocks.at(details.details).data(), &values[details.control], 4);
        return checkDetails(handle, details, flags);
    }
    std::uint32_t setControlDetails(MixerHandle handle, MixerControlDetails& details,
                                    std::uint32_t flags) override {
        std::memcpy(&values[details.control], blocks.at(details.details).data(), 4);
        return checkDetails(handle, details, flags);
    }
    std::uint32_t close(MixerHandle handle) override {
        return opened.erase(handle) == 1 ? 0 : mixer_result::invalidHandle;
    }
    MemoryHandle globalAlloc(std::uint32_t, std::uint32_t bytes) override {
        blocks[++lastBlock_].resize(bytes);
        return lastBlock_;
    }
    std::byte* globalLock(MemoryHandle block) override { return blocks.at(block).data(); }
    void globalFree(MemoryHandle block) override { EXPECT_EQ(blocks.erase(block), 1U); }

    std::vector<std::string> names; // of the devices; "busy" cannot be opened
    std::map<std::uint32_t, std::set<std::uint32_t>> lines; // control types by component
    std::map<std::uint32_t, std::int32_t> values;           // by control
    bool failing = false;
    std::set<MixerHandle> opened;
    std::map<MemoryHandle, std::vector<std::byte>> blocks;

private:
    std::uint32_t checkDetails(MixerHandle handle, const MixerControlDetails& details,
                               std::uint32_t flags) const {
        const bool right = opened.contains(handle) && details.size == 24 && details.channels == 1 &&
                           details.multipleItems == 0 && details.detailSize == 4 && flags == 0;
        return right && !failing ? 0 : mixer_result::invalidParameter;
    }

    MixerCalls* before_;
    MemoryHandle lastBlock_ = 0;
};

TEST(Mixer, ChoosesADevice) {
    struct Case {
        const char* name;
        std::vector<std::string> devices;
        std::string wanted;
        std::string chosen; // "" none
        std::set<MixerHandle> leftOpen;
    };
    const std::vector<Case> cases = {
        {"other letter case, blanks around",
         {"One", " sb16 MIXER [220] ", "Three"},
         "SB16 Mixer [220]",
         "sb16 MIXER [220]",
         {71}},
        {"one that is busy is passed over", {"busy", "B"}, "b", "B", {71}},
        {"the first when none has the name", {"A", "B"}, "SB16 Mixer [220]", "A", {70}},
        {"the first without a name", {"", "B"}, "", "", {70}},
        {"no device", {}, "SB16 Mixer [220]", "", {}}};
    for (const Case& test : cases) {
        SCOPED_TRACE(test.name);
        FakeMixer fake;
        fake.names = test.devices;
        fake.values = {{0, 9}};
        clsMixer mixer;
        mixer.DefaultMixerName(test.wanted);
        EXPECT_EQ(mixer.Init_MixerControl(), !test.leftOpen.empty());
        EXPECT_EQ(mixer.CurrentMixerName(), test.chosen);
        EXPECT_EQ(fake.opened, test.leftOpen);
        if (test.leftOpen.empty()) {
            EXPECT_EQ(mixer.GetVolumeValue() + mixer.GetVUMeterValue(), 0);
            EXPECT_FALSE(mixer.SetVolumeValue(1));
        }
    }
}

TEST(Mixer, FindsControlsAndTheirValues) {
    FakeMixer fake;
    fake.names = {"A"};
    fake.lines = {{mixer_line::speakers, {mixer_control::volume, mixer_control::peakMeter}},
                  {mixer_line::waveOutput, {mixer_control::peakMeter}}};
    {
        clsMixer mixer;
        ASSERT_TRUE(mixer.Init_MixerControl());
        EXPECT_TRUE(mixer.Init_VolumeControl()) << "of the speakers";
        EXPECT_TRUE(mixer.Init_VUMeterControl());
        EXPECT_EQ(mixer.VolumeMinimum(), 5);
        EXPECT_EQ(mixer.VolumeMaximum(), 100);
        EXPECT_EQ(mixer.VUMeterMinimum(), -100);
        EXPECT_EQ(mixer.VUMeterMaximum(), 100);

        fake.values = {{11, 0}, {12, -77}};
        EXPECT_TRUE(mixer.SetVolumeValue(66));
        EXPECT_EQ(mixer.GetVolumeValue(), 66);
        EXPECT_EQ(mixer.GetVUMeterValue(), -77);
        fake.failing = true;
        EXPECT_FALSE(mixer.SetVolumeValue(1));
        EXPECT_EQ(mixer.GetVolumeValue() + mixer.GetVUMeterValue(), 0);

        fake.lines.clear();
        EXPECT_FALSE(mixer.Init_VolumeControl());
        EXPECT_EQ(mixer.VolumeMaximum(), 0) << "bounds of a control that is gone";
        EXPECT_EQ(fake.blocks.size(), 1U) << "only the buffer for reading values";
    }
    EXPECT_TRUE(fake.blocks.empty());
    EXPECT_EQ(fake.opened.size(), 1U) << "the mixer stays open";
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
    const MemoryHandle room = mixer.globalAlloc(0, 152);
    const auto controls = [&](std::uint32_t id, std::uint32_t type, std::uint32_t each) {
        MixerLineControls record{24, id, type, 1, each, room};
        return mixer.getLineControls(handle, record, 2);
    };
    EXPECT_EQ(controls(1, mixer_control::volume, 148), mixer_result::success);
    EXPECT_EQ(controls(1, mixer_control::volume, 147), mixer_result::invalidParameter);
    EXPECT_EQ(controls(2, mixer_control::volume, 152), mixer_result::invalidLine);
    EXPECT_EQ(controls(1, 0x20010001, 152), mixer_result::invalidControl);
    mixer.globalFree(room);

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
    MixerControlDetails meter{24, 2, 1, 0, 4, block};
    EXPECT_EQ(mixer.setControlDetails(handle, meter, 0), mixer_result::notSupported);
    mixer.globalFree(small);
    mixer.globalFree(block);
}

} // namespace
} // namespace ov
