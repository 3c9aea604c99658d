// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "playback/clsMixer.h"
#include "sound/device/wave_mixer.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace ov {
namespace {

using namespace sound;

// The system's mixer, but for devices with names and controls of the test's choice.
class ScriptedMixer final : public WaveMixer {
public:
    ScriptedMixer() : before_(installMixerCalls(this)) {}
    ~ScriptedMixer() override { installMixerCalls(before_); }
    ScriptedMixer(const ScriptedMixer&) = delete;
    ScriptedMixer& operator=(const ScriptedMixer&) = delete;

    std::uint32_t getNumDevs() override { return static_cast<std::uint32_t>(names.size()); }
    std::uint32_t open(MixerHandle& handle, std::uint32_t device, std::uint32_t callback,
                       std::uint32_t instance, std::uint32_t flags) override {
        if (device < names.size() && names[device] == "busy")
            return mixer_result::badDevice;
        opened.push_back(device);
        return WaveMixer::open(handle, device, callback, instance, flags);
    }
    std::uint32_t getDevCaps(MixerHandle handle, MixerCaps& caps, std::uint32_t size) override {
        const std::uint32_t result = WaveMixer::getDevCaps(handle, caps, size);
        caps.name = {};
        names.at(opened.back()).copy(caps.name.data(), caps.name.size());
        return result;
    }
    std::uint32_t getLineInfo(MixerHandle handle, MixerLine& line, std::uint32_t flags) override {
        component_ = std::exchange(line.component, mixer_line::waveOutput);
        return WaveMixer::getLineInfo(handle, line, flags);
    }
    std::uint32_t getLineControls(MixerHandle handle, MixerLineControls& asked,
                                  std::uint32_t flags) override {
        if (!controls.contains({component_, asked.controlType}))
            return mixer_result::invalidControl;
        used.emplace_back(component_, asked.controlType);
        return WaveMixer::getLineControls(handle, asked, flags);
    }
    std::uint32_t close(MixerHandle handle) override {
        opened.pop_back();
        return WaveMixer::close(handle);
    }
    MemoryHandle globalAlloc(std::uint32_t flags, std::uint32_t bytes) override {
        ++blocks;
        return WaveMixer::globalAlloc(flags, bytes);
    }
    void globalFree(MemoryHandle block) override {
        --blocks;
        WaveMixer::globalFree(block);
    }

    using Control = std::pair<std::uint32_t, std::uint32_t>; // component and type
    std::vector<std::string> names; // of the devices; "busy" cannot be opened
    std::set<Control> controls;
    std::vector<Control> used;
    std::vector<std::size_t> opened;
    int blocks = 0;

private:
    MixerCalls* before_;
    std::uint32_t component_ = 0; // of the newest line
};

TEST(Mixer, ChoosesADevice) {
    using Texts = std::vector<std::string>;
    const struct {
        Texts devices;
        std::string wanted;
        std::string chosen;
        std::vector<std::size_t> leftOpen;
    } cases[] = {
        {{"One", " sb16 MIXER [220] ", "Three"}, "SB16 Mixer [220]", "sb16 MIXER [220]", {1}},
        {{"busy", "B"}, "b", "B", {1}},
        {{"A", "B"}, "SB16 Mixer [220]", "A", {0}},
        {{"", "B"}, "", "", {0}}};
    for (const auto& test : cases) {
        SCOPED_TRACE(test.wanted + " " + test.chosen);
        ScriptedMixer fake;
        fake.names = test.devices;
        clsMixer mixer;
        mixer.DefaultMixerName(test.wanted);
        EXPECT_TRUE(mixer.Init_MixerControl());
        EXPECT_EQ(mixer.CurrentMixerName(), test.chosen);
        EXPECT_EQ(fake.opened, test.leftOpen);
    }
    ScriptedMixer none;
    clsMixer mixer;
    EXPECT_FALSE(mixer.Init_MixerControl() || mixer.SetVolumeValue(1));
    EXPECT_EQ(mixer.GetVolumeValue() + mixer.GetVUMeterValue(), 0);
}

TEST(Mixer, FindsControlsAndTheirValues) {
    using Controls = std::vector<ScriptedMixer::Control>;
    const ScriptedMixer::Control peakMeter(mixer_line::waveOutput, mixer_control::peakMeter);
    const ScriptedMixer::Control volume(mixer_line::speakers, mixer_control::volume);
    ScriptedMixer fake;
    fake.names = {"A"};
    fake.controls = {volume, peakMeter, {mixer_line::speakers, mixer_control::peakMeter}};
    {
        clsMixer mixer;
        ASSERT_TRUE(mixer.Init_MixerControl());
        EXPECT_TRUE(mixer.Init_VolumeControl());
        for (const std::int32_t value : {0, 1, 32768, 65535}) {
            EXPECT_TRUE(mixer.SetVolumeValue(value));
            EXPECT_EQ(mixer.GetVolumeValue(), value);
        }
        EXPECT_FALSE(mixer.SetVolumeValue(65536) || mixer.SetVolumeValue(-1));
        EXPECT_EQ(mixer.GetVolumeValue(), 65535);
        EXPECT_EQ(mixer.GetVUMeterValue(), 0) << "of a control that was not found";
        EXPECT_TRUE(mixer.Init_VUMeterControl());
        EXPECT_EQ(mixer.GetVUMeterValue(), 0) << "nothing is played";
        EXPECT_EQ(fake.used, (Controls{volume, peakMeter})) << "of the speakers if need be";
        EXPECT_EQ((std::array{mixer.VolumeMinimum(), mixer.VolumeMaximum(), mixer.VUMeterMinimum(),
                              mixer.VUMeterMaximum()}),
                  (std::array{0, 65535, -32768, 32767}));
        fake.controls.clear();
        EXPECT_FALSE(mixer.Init_VolumeControl());
        EXPECT_EQ(mixer.VolumeMaximum(), 0) << "bounds of a control that is gone";
        EXPECT_EQ(fake.blocks, 1) << "only the buffer for reading values";
    }
    EXPECT_EQ(fake.blocks, 0);
    EXPECT_EQ(fake.opened.size(), 1U) << "the mixer stays open";
}

// The system's own mixer answers wrong questions as programs expect it.
TEST(Mixer, AnswersWrongQuestions) {
    MixerCalls& mixer = systemMixerCalls();
    MixerHandle handle = 0;
    EXPECT_EQ(mixer.open(handle, mixer.getNumDevs(), 0, 0, 0), mixer_result::badDevice);
    ASSERT_EQ(mixer.open(handle, 0, 0, 0, 0), mixer_result::success);
    MixerCaps caps;
    EXPECT_EQ(mixer.getDevCaps(0, caps, 48), mixer_result::success) << "a device's number";
    EXPECT_EQ(std::string(caps.name.data()) + std::to_string(caps.destinations), "OVSearch1");
    EXPECT_EQ(mixer.getDevCaps(handle, caps, 47), mixer_result::invalidParameter);
    EXPECT_EQ(mixer.getDevCaps(1, caps, 48), mixer_result::badDevice);
    MixerLine line;
    const auto askForLine = [&](MixerHandle with, std::uint32_t size, std::uint32_t component,
                                std::uint32_t flags) {
        line.size = size;
        line.component = component;
        return mixer.getLineInfo(with, line, flags);
    };
    EXPECT_EQ(askForLine(handle, 168, mixer_line::waveOutput, 3), mixer_result::success);
    EXPECT_EQ((std::array{line.size, line.line, line.state, line.component, line.channels,
                          line.controls, line.targetType}),
              (std::array{168U, 1U, 0x80000001U, mixer_line::waveOutput, 1U, 2U, 1U}));
    EXPECT_EQ(std::string(line.shortName.data()) + line.name.data() + line.targetName.data(),
              "WaveWave outputOVSearch");
    EXPECT_EQ(askForLine(handle, 164, mixer_line::waveOutput, 3), mixer_result::invalidParameter);
    EXPECT_EQ(askForLine(handle, 168, mixer_line::waveOutput, 2), mixer_result::invalidParameter);
    EXPECT_EQ(askForLine(handle, 168, 0x1003, 3), mixer_result::invalidLine);
    EXPECT_EQ(askForLine(0, 168, mixer_line::waveOutput, 3), mixer_result::invalidHandle);

    const MemoryHandle block = mixer.globalAlloc(0, 152);
    const MemoryHandle small = mixer.globalAlloc(0, 3);
    const struct {
        MixerLineControls asked;
        std::uint32_t result;
        std::uint32_t flags = 2;
    } controls[] = {{{24, 1, mixer_control::volume, 1, 148, block}, mixer_result::success},
                    {{24, 1, mixer_control::peakMeter, 1, 148, block}, mixer_result::success},
                    {{23, 1, mixer_control::volume, 1, 148, block}, mixer_result::invalidParameter},
                    {{24, 1, mixer_control::volume, 1, 147, block}, mixer_result::invalidParameter},
                    {{24, 1, mixer_control::volume, 2, 148, block}, mixer_result::invalidParameter},
                    {{24, 1, mixer_control::volume, 1, 148, small}, mixer_result::invalidParameter},
                    {{24, 1, mixer_control::volume, 1, 148, block}, 11, 1},
                    {{24, 2, mixer_control::volume, 1, 148, block}, mixer_result::invalidLine},
                    {{24, 1, 0x20010001, 1, 148, block}, mixer_result::invalidControl}};
    for (auto test : controls) {
        EXPECT_EQ(mixer.getLineControls(handle, test.asked, test.flags), test.result);
        if (test.result == mixer_result::success) {
            MixerControl control;
            std::memcpy(&control, mixer.globalLock(block), sizeof control);
            const bool isVolume = test.asked.controlType == mixer_control::volume;
            EXPECT_EQ(
                (std::array{control.size, control.id, control.type, control.flags, control.steps}),
                (std::array{148U, isVolume ? 1U : 2U, test.asked.controlType, 1U,
                            isVolume ? 192U : 0U}));
            EXPECT_EQ(std::string(control.shortName.data()) + control.name.data(),
                      isVolume ? "VolumeVolume" : "LevelPeak meter");
        }
    }
    const std::pair<MixerControlDetails, std::uint32_t> details[] = {
        {{24, 1, 1, 0, 4, block}, mixer_result::success},
        {{23, 1, 1, 0, 4, block}, mixer_result::invalidParameter},
        {{24, 1, 2, 0, 4, block}, mixer_result::invalidParameter},
        {{24, 1, 1, 0, 3, block}, mixer_result::invalidParameter},
        {{24, 1, 1, 0, 4, small}, mixer_result::invalidParameter},
        {{24, 9, 1, 0, 4, block}, mixer_result::invalidControl}};
    for (auto [asked, result] : details)
        EXPECT_EQ(mixer.getControlDetails(handle, asked, 0), result);
    MixerControlDetails meter{24, 2, 1, 0, 4, block};
    EXPECT_EQ(mixer.setControlDetails(handle, meter, 0), mixer_result::notSupported);
    EXPECT_EQ(mixer.setControlDetails(0, meter, 0), mixer_result::invalidHandle);
    EXPECT_EQ(mixer.close(handle) * 10 + mixer.close(0), mixer_result::invalidHandle);
    mixer.globalFree(small);
    mixer.globalFree(block);
    EXPECT_EQ(mixer.globalLock(block), nullptr);
}

} // namespace
} // namespace ov
