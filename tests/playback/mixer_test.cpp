// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "playback/clsMixer.h"
#include "sound/device/wave_mixer.h"

#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cstring>

namespace ov {
namespace {

using namespace sound;

// The system's mixer, but for devices with names and controls of the test's choice.
class ScriptedMixer final : public WaveMixer {
public:
    ScriptedMixer() : before_(installMixerCalls(this)) {}
    ~ScriptedMixer() override { installMixerCalls(before_); }

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
        component = std::exchange(line.component, mixer_line::waveOutput);
        return WaveMixer::getLineInfo(handle, line, flags);
    }
    std::uint32_t getLineControls(MixerHandle handle, MixerLineControls& asked,
                                  std::uint32_t flags) override {
        if (!controls.contains({component, asked.controlType}))
            return mixer_result::invalidControl;
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
    std::vector<std::size_t> opened;
    int blocks = 0;
    std::uint32_t component = 0; // of the newest line

private:
    MixerCalls* before_;
};

TEST(Mixer, ChoosesADevice) {
    using Texts = std::vector<std::string>;
    const std::tuple<Texts, const char*, const char*, std::size_t> cases[] = {
        {{"One", " sb16 MIXER [220] ", "Three"}, "SB16 Mixer [220]", "sb16 MIXER [220]", 1},
        {{"busy", "B"}, "b", "B", 1},
        {{"A", "B"}, "SB16 Mixer [220]", "A", 0},
        {{"", "B"}, "", "", 0}};
    for (const auto& [devices, wanted, chosen, leftOpen] : cases) {
        ScriptedMixer fake;
        fake.names = devices;
        clsMixer mixer;
        mixer.DefaultMixerName(wanted);
        EXPECT_TRUE(mixer.Init_MixerControl());
        EXPECT_EQ(mixer.CurrentMixerName(), chosen);
        EXPECT_EQ(fake.opened, std::vector<std::size_t>{leftOpen});
    }
    ScriptedMixer none;
    clsMixer mixer;
    EXPECT_FALSE(mixer.Init_MixerControl() || mixer.SetVolumeValue(1));
    EXPECT_EQ(mixer.GetVolumeValue() + mixer.GetVUMeterValue(), 0);
}

TEST(Mixer, FindsControlsAndTheirValues) {
    ScriptedMixer fake;
    fake.names = {"A"};
    fake.controls = {{mixer_line::speakers, mixer_control::volume},
                     {mixer_line::waveOutput, mixer_control::peakMeter},
                     {mixer_line::speakers, mixer_control::peakMeter}};
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
        EXPECT_EQ(fake.component, mixer_line::waveOutput) << "the speakers only if need be";
        EXPECT_EQ(mixer.GetVUMeterValue(), 0) << "nothing is played";
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

// The answers to a question with each of its fields one less, then one more than it should be.
template <typename Question, typename Ask>
std::vector<std::uint32_t> answersToWrong(const Question& right, Ask ask) {
    using Fields = std::array<std::uint32_t, sizeof right / sizeof(std::uint32_t)>;
    std::vector<std::uint32_t> answers;
    for (const std::uint32_t change : {~0U, 1U})
        for (std::size_t i = 0; i < Fields().size(); ++i) {
            auto fields = std::bit_cast<Fields>(right);
            fields[i] += change;
            auto wrong = std::bit_cast<Question>(fields);
            answers.push_back(ask(wrong));
        }
    return answers;
}

// The system's own mixer answers wrong questions as programs expect it.
TEST(Mixer, AnswersWrongQuestions) {
    using Answers = std::vector<std::uint32_t>;
    MixerCalls& mixer = systemMixerCalls();
    MixerHandle handle = 0;
    MixerCaps caps;
    MixerLine line;
    const auto askForLine = [&](std::uint32_t size, std::uint32_t component, std::uint32_t flags,
                                MixerHandle with) {
        line.size = size;
        line.component = component;
        return mixer.getLineInfo(with, line, flags);
    };
    EXPECT_EQ(
        (Answers{mixer.open(handle, mixer.getNumDevs(), 0, 0, 0), mixer.open(handle, 0, 0, 0, 0),
                 mixer.getDevCaps(0, caps, 48), mixer.getDevCaps(handle, caps, 47),
                 mixer.getDevCaps(1, caps, 48), askForLine(164, mixer_line::waveOutput, 3, handle),
                 askForLine(168, mixer_line::waveOutput, 2, handle),
                 askForLine(168, mixer_line::waveOutput, 3, 0), askForLine(168, 0x1003, 3, handle),
                 askForLine(168, mixer_line::waveOutput, 3, handle)}),
        (Answers{2, 0, 0, 11, 2, 11, 11, 5, 1024, 0}));
    EXPECT_EQ((Answers{line.size, line.line, line.channels, line.controls, line.targetType}),
              (Answers{168, 1, 1, 2, 1}));
    EXPECT_EQ((std::vector<std::string>{caps.name.data(), line.shortName.data(), line.name.data(),
                                        line.targetName.data()}),
              (std::vector<std::string>{"OVSearch", "Wave", "Wave output", "OVSearch"}));

    const MemoryHandle small = mixer.globalAlloc(0, 3);
    const MemoryHandle block = mixer.globalAlloc(0, 152); // the next one
    MixerLineControls volume{24, 1, mixer_control::volume, 1, 148, block};
    MixerControlDetails details{24, 1, 1, 0, 4, block};
    EXPECT_EQ(answersToWrong(volume, [&](auto& q) { return mixer.getLineControls(handle, q, 2); }),
              (Answers{11, 1024, 1025, 11, 11, 11, 0, 1024, 1025, 11, 0, 11}));
    EXPECT_EQ(
        answersToWrong(details, [&](auto& q) { return mixer.getControlDetails(handle, q, 0); }),
        (Answers{11, 1025, 0, 0, 11, 11, 0, 0, 11, 0, 0, 11}));
    details.control = 2; // the meter
    EXPECT_EQ(
        (Answers{mixer.getLineControls(handle, volume, 1), mixer.getLineControls(handle, volume, 2),
                 mixer.setControlDetails(handle, details, 0),
                 mixer.setControlDetails(0, details, 0), mixer.close(handle), mixer.close(0)}),
        (Answers{11, 0, 8, 5, 0, 5}));
    MixerControl control;
    std::memcpy(&control, mixer.globalLock(block), sizeof control);
    EXPECT_EQ((Answers{control.size, control.id, control.flags, control.steps}),
              (Answers{148, 1, 1, 192}));
    mixer.globalFree(block);
    EXPECT_TRUE(mixer.globalLock(block) == nullptr && mixer.globalLock(small) != nullptr);
    mixer.globalFree(small);
}

} // namespace
} // namespace ov
