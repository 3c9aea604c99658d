// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// What is really heard: the device plays into a sound server that is recorded. Skipped where no
// server can be started.

#include "platform/media.h"
#include "playback/clsMixer.h"
#include "playback/modMultimedia.h"
#include "sound_server.h"
#include "sound_signal.h"
#include "temporary_store.h"
#include "wave_files.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <optional>

namespace ov::modMultimedia {
namespace {

using tests::WaveKind;
using namespace std::string_literals;
using Samples = std::vector<float>;

constexpr std::size_t perSecond = tests::SoundServer::rate;
constexpr const char* alias = "PBWave";

class Sound : public ::testing::Test {
protected:
    void SetUp() override {
        server_.emplace();
        if (!server_->isRunning())
            GTEST_SKIP() << "no sound server can be started";
        recorder_.emplace(*server_);
    }
    void TearDown() override { MciCloseAll(); }

    // Writes and opens a file; keeps what it holds, as the server plays it.
    void open(const WaveKind& kind, const Samples& samples) {
        const std::string native = store_.native("a dictation.WAV");
        tests::writeWave(native, kind, samples);
        file_ = tests::resampled(tests::mono(tests::readWave(native), kind.channels), kind.rate,
                                 tests::SoundServer::rate);
        MciClose(alias);
        ASSERT_EQ(MciOpen(alias, store_.path("a dictation.WAV"), "waveaudio"), "");
    }
    void openSweep(const WaveKind& kind, double seconds) {
        const auto frames = static_cast<std::size_t>(seconds * kind.rate);
        open(kind, tests::sweep(kind.rate, frames, kind.channels));
    }
    // A tone of that loudness.
    void openTone(double frequency, double loudness, double seconds) {
        const WaveKind kind{SF_FORMAT_PCM_16, 16000};
        Samples samples;
        for (int i = 0; i < static_cast<int>(seconds * kind.rate); ++i)
            samples.push_back(
                static_cast<float>(loudness * std::sin(2 * M_PI * frequency * i / kind.rate)));
        open(kind, samples);
    }

    static void waitUntil(const std::function<bool()>& state) {
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(60);
        while (!state()) {
            ASSERT_LT(std::chrono::steady_clock::now(), deadline) << "the state never comes";
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
    }
    static void waitForPosition(std::int32_t milliseconds) {
        waitUntil([=] { return MciGetPosition(alias) >= milliseconds; });
    }
    // A fifth of a second of silence was recorded from now on.
    void waitForSilence() {
        const std::size_t start = recorder_->count();
        waitUntil([this, start] {
            const std::size_t end = recorder_->count();
            if (end < start + perSecond / 5)
                return false;
            const Samples recent = recorder_->samples(end - perSecond / 5, end);
            return tests::startOfSound(recent) == recent.size();
        });
    }
    void playToEnd() {
        waitUntil([] { return MciGetMode(alias) != "playing"; });
        waitForSilence();
    }
    Samples recordedSince(std::size_t start) const {
        return recorder_->samples(start, recorder_->count());
    }

    // How much of the file is heard in the recording as it should be: windows of a quarter of a
    // second that match the file where they should, give or take a tenth of a second.
    double matchingPart(const Samples& recording) const {
        const std::size_t window = perSecond / 4;
        std::size_t start = tests::startOfSound(recording);
        int windows = 0;
        int matching = 0;
        for (std::size_t at = window / 2; at + 2 * window < file_.size(); at += window) {
            const auto piece = std::span(file_).subspan(at, window);
            const std::size_t slack = perSecond / 10;
            const tests::Match match = tests::findPiece(
                piece, recording, start + at - std::min(start + at, slack), start + at + slack);
            ++windows;
            matching += match.correlation > 0.98 ? 1 : 0;
        }
        return windows == 0 ? 0 : static_cast<double>(matching) / windows;
    }

    // Whether the first quarter of a second that is heard lies there in the file, within 50 ms.
    bool startsAt(const Samples& heard, std::int32_t milliseconds) const {
        const std::size_t first = tests::startOfSound(heard);
        if (heard.size() <= first + perSecond / 4)
            return false;
        const auto piece = std::span(heard).subspan(first, perSecond / 4);
        const std::size_t place = static_cast<std::size_t>(milliseconds) * perSecond / 1000;
        const std::size_t slack = perSecond / 20;
        return tests::findPiece(piece, file_, place - slack, place + slack).correlation > 0.98;
    }

    // A machine that is busy drops some sound now and then, but not always.
    static bool succeedsOnce(const std::function<bool()>& attempt) {
        constexpr int attempts = 5;
        for (int i = 0; i < attempts; ++i)
            if (attempt())
                return true;
        return false;
    }

    tests::TemporaryStore store_;
    std::optional<tests::SoundServer> server_;
    std::optional<tests::Recorder> recorder_;
    Samples file_;
};

TEST_F(Sound, IsThatOfTheFile) {
    const std::vector<std::pair<const char*, WaveKind>> kinds = {
        {"16 bit", {SF_FORMAT_PCM_16, 16000}},
        {"8 bit", {SF_FORMAT_PCM_U8, 11025}},
        {"24 bit stereo", {SF_FORMAT_PCM_24, 44100, 2}},
        {"float, no usual rate", {SF_FORMAT_FLOAT, 37123}},
        {"A-law", {SF_FORMAT_ALAW, 8000}},
        {"mu-law stereo", {SF_FORMAT_ULAW, 8000, 2}},
        {"IMA ADPCM", {SF_FORMAT_IMA_ADPCM, 16000}},
        {"MS ADPCM stereo", {SF_FORMAT_MS_ADPCM, 22050, 2}},
        {"GSM 6.10", {SF_FORMAT_GSM610, 8000}},
        {"big-endian", {SF_FORMAT_WAV | SF_FORMAT_PCM_16 | SF_ENDIAN_BIG, 16000}},
        {"another kind of file", {SF_FORMAT_AIFF | SF_FORMAT_PCM_16, 48000}}};
    for (const auto& [name, kind] : kinds) {
        SCOPED_TRACE(name);
        openSweep(kind, 1.4);
        EXPECT_TRUE(succeedsOnce([this] {
            const std::size_t start = recorder_->count();
            EXPECT_EQ(MciPlay(alias, -1, 0, -1), "");
            playToEnd();
            EXPECT_EQ(MciGetPosition(alias), MciGetLength(alias));
            return matchingPart(recordedSince(start)) == 1;
        }));
    }
}

TEST_F(Sound, PausesSeeksAndStops) {
    openSweep({SF_FORMAT_PCM_16, 16000}, 6);
    ASSERT_EQ(MciPlay(alias, -1, 0, -1), "");
    waitForPosition(500);
    ASSERT_EQ(MciPause(alias), "");
    const std::int32_t paused = MciGetPosition(alias);
    waitForSilence();
    EXPECT_EQ(MciGetMode(alias), "paused");
    EXPECT_EQ(MciGetPosition(alias), paused);

    const struct {
        const char* name;
        std::function<void()> play;
        std::int32_t from;
    } cases[] = {
        {"resume", [] { MciResume(alias); }, paused},
        {"seek to the end and back, play",
         [] {
             MciSeek(alias, 6000);
             MciSeek(alias, 2345);
             MciPlay(alias, -1, -1, -1);
         },
         2345},
        {"play a later place while playing", [] { MciPlay(alias, -1, 4000, 5900); }, 4000}};
    for (const auto& test : cases) {
        SCOPED_TRACE(test.name);
        EXPECT_TRUE(succeedsOnce([&] {
            const std::size_t start = recorder_->count();
            test.play();
            waitForPosition(test.from + 400);
            MciStop(alias);
            EXPECT_EQ(MciGetMode(alias), "stopped");
            waitForSilence();
            return startsAt(recordedSince(start), test.from);
        })) << "within 50 ms of "
            << test.from;
    }
}

TEST_F(Sound, FollowsVolumeAndMeter) {
    clsMixer mixer;
    ASSERT_TRUE(mixer.Init_MixerControl() && mixer.Init_VolumeControl() &&
                mixer.Init_VUMeterControl());
    const struct {
        std::int32_t volume;
        const char* audio;
        double share;
    } cases[] = {{65535, "on", 1}, {32768, "on", 0.5}, {65535, "off", 0}, {0, "on", 0}};
    for (const auto& test : cases) {
        SCOPED_TRACE(test.volume);
        ASSERT_TRUE(mixer.SetVolumeValue(test.volume));
        openTone(440, 0.8, 3);
        ASSERT_EQ(MciCommand("set PBWave audio all "s + test.audio), "");
        const std::size_t played = recorder_->count();
        ASSERT_EQ(MciPlay(alias, -1, 0, -1), "");
        waitForPosition(300);
        waitUntil([&] {
            const double level = std::abs(mixer.GetVUMeterValue());
            return std::fabs(level / 32768 - 0.8 * test.share) < 0.01;
        });
        recorder_->waitForMore(perSecond / 4);
        MciStop(alias);
        waitForSilence();
        const Samples heard = recordedSince(played);
        EXPECT_EQ(tests::startOfSound(heard) == heard.size(), test.share == 0);
        EXPECT_NEAR(*std::max_element(heard.begin(), heard.end()), 0.8 * test.share, 0.02);
        waitUntil([&] { return mixer.GetVUMeterValue() == 0; });
    }
    mixer.SetVolumeValue(65535);
}

TEST_F(Sound, ChangesSpeedButNotPitch) {
    openTone(440, 0.5, 1.5);
    for (const int tempo : {50, 150, 200}) {
        SCOPED_TRACE(tempo);
        ASSERT_EQ(MciCommand("set PBWave tempo " + std::to_string(tempo)), "");
        EXPECT_EQ(MciGetLength(alias), 1500);
        const std::size_t start = recorder_->count();
        ASSERT_EQ(MciPlay(alias, -1, 0, -1), "");
        playToEnd();
        EXPECT_EQ(MciGetPosition(alias), 1500);
        const Samples heard = recordedSince(start);
        const std::size_t first = tests::startOfSound(heard);
        std::size_t last = heard.size();
        while (last > first && std::fabs(heard[last - 1]) < 1e-3F)
            --last;
        const double seconds = static_cast<double>(last - first) / perSecond;
        EXPECT_NEAR(seconds * tempo / 100, 1.5, 0.15);
        int crossings = 0;
        for (std::size_t i = first; i + 1 < last; ++i)
            crossings += heard[i] < 0 && heard[i + 1] >= 0 ? 1 : 0;
        EXPECT_NEAR(crossings / seconds, 440, 15);
    }
}

TEST_F(Sound, PlaysTwoFilesAtOnce) {
    openTone(440, 0.3, 5);
    const std::string native = store_.native("b.WAV");
    tests::writeWave(native, {SF_FORMAT_PCM_16, 8000}, Samples(40000, 0.25F));
    ASSERT_EQ(MciOpen("Two", store_.path("b.WAV"), "waveaudio"), "");
    ASSERT_EQ(MciPlay(alias, -1, 0, -1), "");
    ASSERT_EQ(MciPlay("Two", -1, 0, -1), "");
    waitForPosition(300);
    EXPECT_EQ(MciGetMode(alias) + MciGetMode("Two"), "playingplaying");
    EXPECT_EQ(MciClose("Two"), "");
    EXPECT_EQ(MciGetMode(alias), "playing");
    EXPECT_EQ(MciGetMode("Two"), "ERROR");
}

TEST_F(Sound, EndsWithAnErrorWhenTheOutputVanishes) {
    openTone(440, 0.3, 20);
    ASSERT_EQ(MciPlay(alias, -1, 0, -1), "");
    waitForPosition(200);
    server_->vanish();
    waitUntil([] { return MciGetMode(alias) == "ERROR"; });
    const std::string lost = "There is a problem with your media device. Make sure it is working "
                             "correctly or contact the device manufacturer.";
    EXPECT_EQ(MciResume(alias), lost);
    EXPECT_LT(MciGetPosition(alias), 20000);
    EXPECT_NE(MciPlay(alias, -1, -1, -1), "") << "nobody is there to play";
    EXPECT_EQ(MciGetMode(alias), "stopped");

    recorder_.reset();
    server_.reset();
    server_.emplace();
    recorder_.emplace(*server_);
    EXPECT_EQ(MciPlay(alias, -1, -1, -1), "");
    waitForPosition(300);
    EXPECT_EQ(MciGetMode(alias), "playing");
}

} // namespace
} // namespace ov::modMultimedia
