// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// The waveaudio device against recorded answers, data/waveaudio.txt and data/media_errors.txt, and
// what it does with files and outputs that are not as they should be. Nothing of it is heard.

#include "sound/device/wave_devices.h"
#include "sound/wave_file.h"
#include "sound/wave_overview.h"
#include "tests/environment.h"
#include "tests/failing_reads.h"
#include "tests/sound_signal.h"
#include "tests/temporary_store.h"
#include "tests/wave_files.h"

#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <iomanip>
#include <map>
#include <sstream>
#include <thread>

namespace ov::sound {
namespace {

using namespace std::string_literals;
using namespace tests;

class WaveDevice : public ::testing::Test {
protected:
    // "code reply", without the blank when there is no reply.
    std::string answer(const std::string& command) {
        std::array<char, 128> reply{'?'}; // which a failure takes away too
        const std::uint32_t code = devices_.sendString(command, reply);
        const std::string text = reply.data();
        return std::to_string(code) + (text.empty() ? "" : " " + text);
    }
    std::string open(const std::string& name) {
        return answer("open " + store_.path(name) + " type waveaudio alias PBWave");
    }
    void waitWhile(const std::string& command, const std::string& expected) {
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(60);
        while (answer(command) == expected) {
            ASSERT_LT(std::chrono::steady_clock::now(), deadline) << command << " for ever";
            std::this_thread::sleep_for(std::chrono::milliseconds(2));
        }
    }
    void waitUntilSilent() { waitWhile("status PBWave mode", "0 playing"); }
    void write(const std::string& name, const WaveKind& kind, std::size_t frames) {
        writeWave(store_.native(name), kind, sweep(kind.rate, frames, kind.channels));
    }
    std::string bytes(const std::string& name) { return readBytes(store_.native(name)); }

    const Environment silent_{"SDL_AUDIODRIVER", "dummy"};
    TemporaryStore store_;
    WaveDevices devices_;
};

// Into an output that takes all that comes six times as fast as it is heard.
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
        write("big", {SF_FORMAT_WAV | SF_FORMAT_PCM_16 | SF_ENDIAN_BIG}, 8000);
        write("extensible", {SF_FORMAT_WAVEX | SF_FORMAT_PCM_16}, 8000);
        write("six", {SF_FORMAT_FLOAT, 192000, 6}, 96000);
        store_.add("text.wav", "no sound\n").add("zero.wav");
        addDamaged();
    }

    // The header takes 44 bytes, its sizes lie at 4 and 40.
    void addDamaged() {
        const std::string whole = bytes("pcm8k.wav");
        const std::string second = bytes("second.wav");
        const std::string mulaw = bytes("mulaw.wav");
        // Each with another number at a place of its header.
        std::istringstream numbers(
            "riffhalf.wav 4 16000 riff0 4 0 long-format 16 0xFFFFFFF0 "
            "no-rate 24 0 too-slow 24 999 slow 24 1000 too-fast 24 192001 lying-rate 28 3 "
            "no-block 32 0x00100000 data0.wav 40 0 dataplus.wav 40 40000 huge 40 0xFFFFFFFF "
            "unaware 40 0x7FFFFFFF piped 40 0x7FFFF000 spoken 40 0x7FFF0000");
        std::string name;
        std::size_t at = 0;
        for (std::uint32_t number = 0; numbers >> std::setbase(0) >> name >> at >> number;) {
            std::string changed = whole;
            for (const unsigned shift : {0U, 8U, 16U, 24U})
                changed.at(at++) = static_cast<char>((number >> shift) & 0xFFU);
            store_.add(name, changed);
        }
        store_.add("trunc.wav", whole.substr(0, 44 + 16000))
            .add("empty.wav", bytes("data0.wav").substr(0, 44))
            .add("nodata.wav", whole.substr(0, 36))
            .add("cut-header", whole.substr(0, 30))
            .add("extra.wav",
                 second.substr(0, 36) + "LIST\4\0\0\0INFO"s + second.substr(36) + "note\2\0\0\0ab"s)
            .add("padded.wav", mulaw.substr(0, 12) + "odd \1\0\0\0x\0"s + mulaw.substr(12))
            .add("twodata.wav", second + second.substr(36));
        store_.addPipe("pipe").addFolder("folder").addLink("nowhere", "gone");
    }

    const Environment driver_{"SDL_AUDIODRIVER", "disk"};
    const Environment file_{"SDL_DISKAUDIOFILE", "/dev/null"};
    const Environment delay_{"SDL_DISKAUDIODELAY", "5"};

    std::string filledIn(std::string command) const {
        const std::string folder = store_.directory().substr(0, store_.directory().size() - 1);
        for (const auto& [mark, text] :
             {std::pair("%W"s, folder), {"<tab>", "\t"}, {"<nul>", "\0"s}})
            if (const std::size_t at = command.find(mark); at != std::string::npos)
                command.replace(at, mark.size(), text);
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

TEST_F(WaveDevice, TellsWhatEachCodeMeans) {
    std::map<std::uint32_t, std::string> known;
    std::ifstream file(OV_SOURCE_DIR "/tests/data/media_errors.txt");
    for (std::string line; std::getline(file, line);)
        if (!line.starts_with(';'))
            known[static_cast<std::uint32_t>(std::stoul(line))] = line.substr(4);
    for (std::uint32_t code = 0; code <= 600; ++code) {
        std::array<char, 256> text{"as before"};
        EXPECT_EQ(devices_.getErrorString(code, text), known.contains(code)) << code;
        EXPECT_EQ(text.data(), known.contains(code) ? known[code] : "as before");
    }
}

TEST_F(WaveDevice, GivesShortNames) {
    const auto shortName = [this](const std::string& path, std::size_t room = 255) {
        std::string buffer(room, '.');
        const std::size_t length = devices_.getShortPathName(path, buffer);
        return length < room ? buffer.substr(0, length) : std::to_string(length);
    };
    write("good", {}, 8000);
    for (const char* odd : {"caf\xE9.WAV", "ümlaut \"x\".WAV"}) {
        const std::string path = store_.add(odd, bytes("good")).path(odd);
        EXPECT_EQ(answer("open " + shortName(path) + " type waveaudio alias PBWave"), "0 1") << odd;
        EXPECT_EQ(answer("close PBWave"), "0");
    }
    const std::string name = std::string(200, 'n') + " with blanks.WAV";
    const std::string path = store_.add(name).path(name);
    const std::string text = shortName(path);
    EXPECT_TRUE(text.size() < 64 && text.find(' ') > 64 && text.ends_with(".WAV")) << text;
    EXPECT_EQ(shortName(path), text);
    EXPECT_EQ(shortName(path, text.size()), std::to_string(text.size() + 1));
    const std::string other = "other " + name.substr(50);
    EXPECT_NE(shortName(store_.add(other).path(other)), text);
    EXPECT_EQ(shortName(store_.path("gone")), "");
    EXPECT_EQ(shortName("\\tmp"), "\\tmp");
}

TEST_F(WaveDevice, WithoutAnOutput) {
    write("a.wav", {}, 80000);
    {
        const Environment none("SDL_AUDIODRIVER", "no such output");
        EXPECT_EQ(open("a.wav"), "0 1");
        waitWhile("set PBWave output 0", "0"); // one of another device may still be closing
        EXPECT_EQ(answer("set PBWave output 0"), "282");
        EXPECT_EQ(answer("play PBWave from 100"), "326");
        EXPECT_EQ(answer("status PBWave position"), "0 100");
        EXPECT_EQ(answer("pause PBWave"), "302");
    }
    EXPECT_EQ(answer("play PBWave"), "0");
    EXPECT_EQ(answer("open " + store_.path("a.wav") + " type waveaudio alias Two"), "0 2");
    EXPECT_EQ(answer("play Two"), "326") << "this output can be opened only once";
    EXPECT_EQ(answer("stop PBWave"), "0");
    waitWhile("play Two", "326"); // until the first lets go
    std::array<char, 4> shorter{};
    EXPECT_EQ(devices_.sendString("status Two mode", shorter), 0U);
    EXPECT_STREQ(shorter.data(), "pla");
}

// What is behind a jump sounds as if the file had been read from its start. No more data and no
// answer are two things, whatever the decoder makes of what it lacks.
TEST_F(WaveDevice, SeeksAndFailsInEveryEncoding) {
    for (const int format : {SF_FORMAT_PCM_16, SF_FORMAT_ULAW, SF_FORMAT_IMA_ADPCM,
                             SF_FORMAT_MS_ADPCM, SF_FORMAT_GSM610}) {
        SCOPED_TRACE(format);
        write("a.wav", {format, 8000}, 20000);
        const std::string native = store_.native("a.wav");
        std::vector<float> whole(20000);
        SndfileHandle(native).read(whole.data(), 20000);
        std::unique_ptr<WaveFile> file;
        ASSERT_EQ(WaveFile::open(native, file), 0U);
        for (const std::int64_t frame : {7777, 1, 0, 319, 12800, 19500, 640}) {
            std::vector<float> piece(400);
            ASSERT_TRUE(file->seek(frame));
            ASSERT_EQ(file->read(piece), piece.size());
            const auto expected = std::span(whole).subspan(static_cast<std::size_t>(frame), 400);
            EXPECT_GT(correlation(piece, expected), 0.98) << frame;
        }
        const auto framesFrom = [&file](std::int64_t start) {
            std::vector<float> piece(100);
            std::size_t frames = 0;
            if (file->seek(start))
                while (const std::size_t got = file->read(piece))
                    frames += got;
            return std::pair(frames, file->failed());
        };
        using Answer = std::pair<std::size_t, bool>;
        EXPECT_EQ(framesFrom(1'000'000'000), Answer(0, false));
        const Answer late(static_cast<std::size_t>(file->frames()) - 15000, false);
        const std::uintmax_t half = fs::file_size(native) / 2;
        const auto expectHalf = [&](bool failed) {
            EXPECT_NEAR(static_cast<double>(framesFrom(0).first), 10000, 1500);
            EXPECT_EQ(file->failed(), failed);
            EXPECT_EQ(framesFrom(15000), Answer(0, failed));
        };
        {
            std::vector<WavePeaks> peaks;
            const FailingReads bad(native, FailingReads::How::fail, static_cast<off_t>(half));
            expectHalf(true);
            EXPECT_FALSE(readWaveOverview(store_.path("a.wav"), {10}, {}, peaks));
        }
        EXPECT_EQ(framesFrom(15000), late) << "it can be read again";
        fs::resize_file(native, half);
        expectHalf(false);
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
    writeWave(store_.native("a.wav"), {SF_FORMAT_PCM_16, 8000, 2}, samples);
    std::vector<WavePeaks> expected(10);
    expected[2] = {-8192, 16384};
    expected[9] = {-32767, 0};
    std::vector<WavePeaks> peaks;
    EXPECT_TRUE(readWaveOverview(store_.path("a.wav"), {10}, {}, peaks));
    EXPECT_EQ(peaks, expected);
    store_.add("cut.wav", bytes("a.wav").substr(0, 44 + samples.size()));
    expected[9] = {};
    EXPECT_TRUE(readWaveOverview(store_.path("cut.wav"), {10}, {}, peaks));
    EXPECT_EQ(peaks, expected);
    EXPECT_TRUE(readWaveOverview(store_.path("a.wav"), {30000}, {}, peaks)) << "more than frames";
    EXPECT_EQ(peaks.size(), 30000U);

    std::stop_source source;
    source.request_stop();
    EXPECT_FALSE(readWaveOverview(store_.path("a.wav"), {10}, source.get_token(), peaks));
    EXPECT_TRUE(peaks.empty());
    EXPECT_FALSE(readWaveOverview(store_.path("gone"), {10}, {}, peaks));
}

} // namespace
} // namespace ov::sound
