// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// The waveaudio device against recorded answers, data/waveaudio.txt, and what it does with files
// and outputs that are not as they should be. Plays into an output that throws everything away.

#include "platform/posix/wave_devices.h"
#include "playback/modMultimedia.h"
#include "settings_fixture.h"
#include "temporary_store.h"
#include "wave_files.h"

#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <fstream>
#include <regex>
#include <string>
#include <thread>

namespace ov::platform {
namespace {

using namespace std::string_literals;
using tests::TemporaryStore;
using tests::WaveSpec;

class WaveDevice : public ::testing::Test {
protected:
    // "code reply", without the blank when there is no reply.
    std::string answer(const std::string& command) {
        std::array<char, 128> reply{};
        const std::uint32_t code = devices_.sendString(command, reply);
        const std::string text = reply.data();
        return std::to_string(code) + (text.empty() ? "" : " " + text);
    }
    std::string open(const std::string& name) {
        return answer("open " + store_.path(name) + " type waveaudio alias PBWave");
    }
    void waitUntilSilent() {
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(60);
        while (answer("status PBWave mode") == "0 playing") {
            ASSERT_LT(std::chrono::steady_clock::now(), deadline) << "plays for ever";
            std::this_thread::sleep_for(std::chrono::milliseconds(2));
        }
    }
    void write(const std::string& name, const WaveSpec& spec, std::size_t frames) {
        tests::writeWave(store_.native(name), spec, tests::sweep(spec.rate, frames, spec.channels));
    }
    std::string bytes(const std::string& name) { return tests::readBytes(store_.native(name)); }

    const tests::Environment silent_{"SDL_AUDIODRIVER", "dummy"};
    TemporaryStore store_;
    WaveDevices devices_;
};

class Recorded : public WaveDevice {
protected:
    Recorded() {
        write("pcm8k.wav", {SF_FORMAT_PCM_16}, 16000);
        for (const char* copy : {"with blank.wav", "noext", "PCM8K.WAV"})
            store_.add(copy, bytes("pcm8k.wav"));
        write("pcm44s.wav", {SF_FORMAT_PCM_16, 44100, 2}, 44100);
        write("pcm11k_u8.wav", {SF_FORMAT_PCM_U8, 11025}, 22051);
        write("mulaw.wav", {SF_FORMAT_ULAW}, 16000);
        write("ima.wav", {SF_FORMAT_IMA_ADPCM}, 16000);
        write("gsm.wav", {SF_FORMAT_GSM610}, 16000);
        write("pcm24.wav", {SF_FORMAT_PCM_24}, 8000);
        write("second.wav", {SF_FORMAT_PCM_16}, 8000);
        store_.add("text.wav", "no sound\n").add("zero.wav");
        addDamaged();
    }

    // The header takes 44 bytes, the sizes lie at 4 and 40.
    void addDamaged() {
        const std::string whole = bytes("pcm8k.wav");
        const std::string second = bytes("second.wav");
        const auto withSizes = [&](std::uint32_t riff, std::uint32_t data) {
            std::string changed = whole;
            tests::setNumber(changed, 4, riff);
            tests::setNumber(changed, 40, data);
            return changed;
        };
        store_.add("trunc.wav", whole.substr(0, 44 + 16000))
            .add("riffhalf.wav", withSizes(16000, 32000))
            .add("data0.wav", withSizes(32036, 0))
            .add("dataplus.wav", withSizes(32036, 40000))
            .add("empty.wav", withSizes(36, 0).substr(0, 44))
            .add("nodata.wav", whole.substr(0, 36))
            .add("extra.wav",
                 second.substr(0, 36) + "LIST\4\0\0\0INFO"s + second.substr(36) + "note\2\0\0\0ab"s)
            .add("twodata.wav", second + second.substr(36));
    }

    std::string filledIn(std::string command) const {
        const std::string folder = store_.directory().substr(0, store_.directory().size() - 1);
        command = std::regex_replace(command, std::regex("%W"), folder);
        command = std::regex_replace(command, std::regex("<tab>"), "\t");
        if (const std::size_t pad = command.find("<pad>"); pad != std::string::npos)
            command.replace(pad, std::string::npos,
                            std::string(128 - std::min<std::size_t>(pad, 128), ' '));
        return command;
    }
};

TEST_F(Recorded, Answers) {
    std::ifstream file(OV_SOURCE_DIR "/tests/data/waveaudio.txt");
    std::string section;
    std::string command;
    int answers = 0;
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with("== ")) {
            section = line;
            answer("close all");
        } else if (line.starts_with("> ")) {
            command = line.substr(2);
        } else if (line.starts_with("= ")) {
            EXPECT_EQ(answer(filledIn(command)), line.substr(2)) << section << "\n" << command;
            ++answers;
        } else if (line == "wait") {
            waitUntilSilent();
        }
    }
    EXPECT_GT(answers, 500);
}

} // namespace
} // namespace ov::platform
