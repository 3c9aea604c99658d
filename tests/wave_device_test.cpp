// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// The waveaudio device against recorded answers, data/waveaudio.txt, and what it does with files
// and outputs that are not as they should be. Plays into an output that throws everything away.

#include "environment.h"
#include "failing_reads.h"
#include "platform/posix/wave_devices.h"
#include "platform/posix/wave_file.h"
#include "platform/wave_overview.h"
#include "sound_signal.h"
#include "temporary_store.h"
#include "wave_files.h"

#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <regex>
#include <string>
#include <thread>

namespace ov::platform {
namespace {

using namespace std::string_literals;
using tests::FailingReads;
using tests::TemporaryStore;
using tests::WaveKind;

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
    void write(const std::string& name, const WaveKind& kind, std::size_t frames) {
        tests::writeWave(store_.native(name), kind, tests::sweep(kind.rate, frames, kind.channels));
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
        const std::string mulaw = bytes("mulaw.wav");
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
            .add("padded.wav", mulaw.substr(0, 12) + "odd \1\0\0\0x\0"s + mulaw.substr(12))
            .add("twodata.wav", second + second.substr(36));
    }

    std::string filledIn(std::string command) const {
        const std::string folder = store_.directory().substr(0, store_.directory().size() - 1);
        command = std::regex_replace(command, std::regex("%W"), folder);
        command = std::regex_replace(command, std::regex("<tab>"), "\t");
        if (const std::size_t pad = command.find("<pad>"); pad != std::string::npos) {
            command.erase(pad);
            command.resize(std::max<std::size_t>(pad, 128), ' ');
        }
        return command;
    }
};

TEST_F(Recorded, Answers) {
    std::ifstream file(OV_SOURCE_DIR "/tests/data/waveaudio.txt");
    std::string section;
    int answers = 0;
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with("== ")) {
            section = line;
            answer("close all");
        } else if (const std::size_t arrow = line.find(" => "); arrow != std::string::npos) {
            EXPECT_EQ(answer(filledIn(line.substr(0, arrow))), filledIn(line.substr(arrow + 4)))
                << section << "\n"
                << line;
            ++answers;
        } else if (line == "wait") {
            waitUntilSilent();
        }
    }
    EXPECT_GT(answers, 450);
}

TEST_F(WaveDevice, TakesFilesAsTheyAre) {
    write("good", {SF_FORMAT_PCM_16}, 8000);
    write("float", {SF_FORMAT_FLOAT, 96000, 6}, 96000);
    write("big", {SF_FORMAT_WAV | SF_FORMAT_PCM_16 | SF_ENDIAN_BIG}, 8000);
    write("odd", {SF_FORMAT_PCM_16, 11025, 2}, 33333);
    const std::string good = bytes("good");
    const auto with = [&](std::size_t at, std::uint32_t number) {
        std::string changed = good;
        tests::setNumber(changed, at, number);
        return changed;
    };
    store_.add("huge", with(40, 0xFFFFFFFF)).add("unaware", with(40, 0x7FFFFFFF));
    store_.add("piped", with(40, 0x7FFFF000)).add("spoken", with(40, 0x7FFF0000));
    store_.add("no rate", with(24, 0)).add("wild rate", with(24, 0x7FFFFFFF));
    store_.add("lying rate", with(28, 3)).add("cut header", good.substr(0, 30));
    store_.add("riff 0", with(4, 0)).add("no block", with(32, 0x00100000));
    store_.add("long format", good.substr(0, 16) + "\xF0\xFF\xFF\xFF"s + good.substr(20));
    store_.addPipe("pipe").addFolder("folder").addLink("nowhere", "gone");
    store_.add("caf\xE9.WAV", good).add("ümlaut \"x\".WAV", good);
    const std::vector<std::pair<const char*, const char*>> lengths = {
        {"good", "1000"},        {"float", "1000"},
        {"big", "1000"},         {"odd", "3023"},
        {"huge", "1000"},        {"unaware", "1000"},
        {"piped", "1000"},       {"spoken", "1000"},
        {"no rate", "296"},      {"wild rate", "296"},
        {"lying rate", "1000"},  {"cut header", "296"},
        {"riff 0", "1000"},      {"long format", "296"},
        {"pipe", "275"},         {"folder", "275"},
        {"nowhere", "275"},      {"gone", "275"},
        {"caf\xE9.WAV", "1000"}, {"ümlaut \"x\".WAV", "1000"}};
    for (const auto& [name, length] : lengths) {
        SCOPED_TRACE(name);
        std::array<char, 255> path{};
        devices_.getShortPathName(store_.path(name), path);
        const std::string opened = answer("open "s + path.data() + " type waveaudio alias PBWave");
        EXPECT_EQ(opened == "0 1" ? answer("status PBWave length") : opened,
                  (opened == "0 1" ? "0 "s : ""s) + length);
        answer("close all");
    }
    EXPECT_EQ(open("no block").substr(0, 3).find_first_not_of("0123456789 "), std::string::npos);
}

TEST_F(WaveDevice, GivesShortNames) {
    const std::string name = std::string(200, 'n') + " with blanks.WAV";
    store_.add(name).add("other " + name.substr(50));
    const auto shortName = [this](const std::string& path, std::size_t room = 255) {
        std::string buffer(room, '.');
        const std::size_t length = devices_.getShortPathName(path, buffer);
        return std::pair(length, buffer.substr(0, std::min(length, room)));
    };
    const auto [length, text] = shortName(store_.path(name));
    EXPECT_TRUE(length > 0 && length < 64 && text.find(' ') == std::string::npos) << text;
    EXPECT_TRUE(text.ends_with(".WAV"));
    EXPECT_EQ(shortName(store_.path(name)).second, text);
    EXPECT_NE(shortName(store_.path("other " + name.substr(50))).second, text);
    EXPECT_EQ(shortName(store_.path("gone")).first, 0U);
    EXPECT_EQ(shortName(store_.path(name), length),
              std::pair(length + 1, std::string(length, '.')));
    EXPECT_EQ(shortName("\\tmp").second, "\\tmp");
}

TEST_F(WaveDevice, WithoutAnOutput) {
    const tests::Environment none("SDL_AUDIODRIVER", "no such output");
    write("a.wav", {}, 8000);
    EXPECT_EQ(open("a.wav"), "0 1");
    EXPECT_EQ(answer("set PBWave output 0"), "282");
    EXPECT_EQ(answer("play PBWave from 100"), "326");
    EXPECT_EQ(answer("status PBWave mode"), "0 stopped");
    EXPECT_EQ(answer("status PBWave position"), "0 100");
    EXPECT_EQ(answer("pause PBWave"), "302");
}

// What is behind a jump sounds as if the file had been read from its start.
TEST_F(WaveDevice, SeeksInEveryEncoding) {
    for (const int format : {SF_FORMAT_PCM_16, SF_FORMAT_ULAW, SF_FORMAT_IMA_ADPCM,
                             SF_FORMAT_MS_ADPCM, SF_FORMAT_GSM610, SF_FORMAT_FLOAT}) {
        SCOPED_TRACE(format);
        write("a.wav", {format, 8000}, 20000);
        const std::vector<float> whole = tests::readWave(store_.native("a.wav"));
        std::unique_ptr<WaveFile> file;
        ASSERT_EQ(WaveFile::open(store_.native("a.wav"), file), 0U);
        for (const std::int64_t frame : {7777, 1, 0, 319, 12800, 19500, 640}) {
            std::vector<float> piece(400);
            ASSERT_TRUE(file->seek(frame));
            ASSERT_EQ(file->read(piece), piece.size());
            const auto expected = std::span(whole).subspan(static_cast<std::size_t>(frame), 400);
            EXPECT_GT(tests::correlation(piece, expected), 0.98) << frame;
        }
        EXPECT_TRUE(file->seek(1'000'000'000));
        std::vector<float> nothing(10);
        EXPECT_EQ(file->read(nothing), 0U);
        EXPECT_FALSE(file->failed());
    }
}

// No more data and no answer are two things, whatever the decoder makes of what it lacks.
TEST_F(WaveDevice, TellsWhatCannotBeReadFromWhatIsNotThere) {
    for (const int format : {SF_FORMAT_PCM_16, SF_FORMAT_ULAW, SF_FORMAT_IMA_ADPCM,
                             SF_FORMAT_MS_ADPCM, SF_FORMAT_GSM610}) {
        SCOPED_TRACE(format);
        write("a.wav", {format, 8000}, 20000);
        const std::string native = store_.native("a.wav");
        const std::uintmax_t half = std::filesystem::file_size(native) / 2;
        std::unique_ptr<WaveFile> file;
        ASSERT_EQ(WaveFile::open(native, file), 0U);
        const auto late = static_cast<std::size_t>(file->frames()) - 15000;
        const auto framesFrom = [&file](std::int64_t start) {
            std::vector<float> piece(100);
            std::size_t frames = 0;
            if (file->seek(start))
                while (const std::size_t got = file->read(piece))
                    frames += got;
            return frames;
        };
        {
            std::vector<WavePeaks> peaks;
            const FailingReads bad(native, FailingReads::How::fail, static_cast<off_t>(half));
            EXPECT_NEAR(static_cast<double>(framesFrom(0)), 10000, 1500);
            EXPECT_TRUE(file->failed());
            EXPECT_EQ(framesFrom(15000), 0U);
            EXPECT_TRUE(file->failed());
            EXPECT_FALSE(readWaveOverview(store_.path("a.wav"), 10, {}, peaks));
        }
        EXPECT_EQ(framesFrom(15000), late) << "it can be read again";
        EXPECT_FALSE(file->failed());
        std::filesystem::resize_file(native, half);
        EXPECT_EQ(framesFrom(15000), 0U);
        EXPECT_FALSE(file->failed());
        EXPECT_NEAR(static_cast<double>(framesFrom(0)), 10000, 1500);
        EXPECT_FALSE(file->failed());
        const FailingReads bad(native, FailingReads::How::fail);
        EXPECT_EQ(WaveFile::open(native, file), media_error::cannotRead);
    }
}

TEST_F(WaveDevice, PlaysOnceASlowDiskAnswers) {
    write("a.wav", {}, 8000);
    ASSERT_EQ(open("a.wav"), "0 1");
    {
        const FailingReads slow(store_.native("a.wav"), FailingReads::How::stall, 44);
        EXPECT_EQ(answer("play PBWave from 100"), "0");
        FailingReads::waitUntilMet();
        EXPECT_EQ(answer("play PBWave from 200"), "0") << "while the disk is still asked";
        EXPECT_EQ(answer("status PBWave mode"), "0 playing");
        EXPECT_EQ(answer("status PBWave position"), "0 200");
    }
    waitUntilSilent();
    EXPECT_EQ(answer("status PBWave position"), "0 1000");
}

TEST_F(WaveDevice, DrawsOverviews) {
    std::vector<float> samples(20000, 0.0F); // ten thousand frames
    samples[5000] = 0.5F;                    // left, third stretch
    samples[5999] = -0.25F;                  // right, its end
    samples[19998] = -1;
    tests::writeWave(store_.native("a.wav"), {SF_FORMAT_PCM_16, 8000, 2}, samples);
    std::vector<WavePeaks> expected(10);
    expected[2] = {-8192, 16384};
    expected[9] = {-32767, 0};
    std::vector<WavePeaks> peaks;
    EXPECT_TRUE(readWaveOverview(store_.path("a.wav"), 10, {}, peaks));
    EXPECT_EQ(peaks, expected);

    std::string cut = bytes("a.wav");
    store_.add("cut.wav", cut.substr(0, cut.size() / 2));
    expected[9] = {};
    EXPECT_TRUE(readWaveOverview(store_.path("cut.wav"), 10, {}, peaks));
    EXPECT_EQ(peaks, expected);
    EXPECT_TRUE(readWaveOverview(store_.path("a.wav"), 30000, {}, peaks)) << "more than frames";
    EXPECT_EQ(peaks.size(), 30000U);

    std::stop_source source;
    source.request_stop();
    EXPECT_FALSE(readWaveOverview(store_.path("a.wav"), 10, source.get_token(), peaks));
    EXPECT_TRUE(peaks.empty());
    EXPECT_FALSE(readWaveOverview(store_.path("gone"), 10, {}, peaks));
}

} // namespace
} // namespace ov::platform
