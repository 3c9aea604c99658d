// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// What is really heard: the device plays into a sound server that is recorded. Skipped where no
// server can be started.

#include "playback/clsMixer.h"
#include "tests/sound/sound_fixture.h"

#include <random>

namespace ov::modMultimedia {
namespace {

using namespace std::string_literals;

TEST_F(Sound, IsThatOfTheFile) {
    const WaveKind kinds[] = {
        {SF_FORMAT_PCM_U8, 11025},   {SF_FORMAT_PCM_24, 44100, 2},
        {SF_FORMAT_FLOAT, 37123, 3}, {SF_FORMAT_MS_ADPCM, 22050, 2},
        {SF_FORMAT_GSM610, 8000},    {SF_FORMAT_AIFF | SF_FORMAT_PCM_16, 48000}};
    for (const WaveKind& kind : kinds) {
        SCOPED_TRACE(kind.rate);
        openRising(kind, 1.4);
        const std::size_t start = recorder_->count();
        EXPECT_EQ(MciPlay(alias, -1, 0, -1), "");
        playToEnd();
        EXPECT_EQ(MciGetPosition(alias), MciGetLength(alias));
        expectHeard(recordedSince(start), 0, MciGetLength(alias));
    }
}

TEST_F(Sound, PausesSeeksAndStops) {
    openRising({SF_FORMAT_PCM_16, 16000}, 6);
    const std::pair<std::int32_t, std::function<void()>> plays[] = {
        {0, [] { MciPlay(alias, -1, 0, -1); }},
        {-1, [] { MciResume(alias); }}, // where it was paused
        {2345,
         [] {
             MciSeek(alias, 6000);
             MciSeek(alias, 2345);
             MciPlay(alias, -1, -1, -1);
         }},
        {4000, [] { MciPlay(alias, -1, 4000, 5900); }}};
    std::int32_t position = 0;
    for (const auto& [place, play] : plays) {
        const std::int32_t from = place < 0 ? position : place;
        const std::size_t start = recorder_->count();
        play();
        waitForPosition(from + 400);
        EXPECT_EQ(from == 0 ? MciPause(alias) : MciStop(alias), "");
        position = MciGetPosition(alias);
        EXPECT_EQ(MciGetMode(alias), from == 0 ? "paused" : "stopped");
        waitForSilence();
        EXPECT_EQ(MciGetPosition(alias), position);
        expectHeard(recordedSince(start), from, position);
    }
}

TEST_F(Sound, FollowsVolumeAndMeter) {
    clsMixer mixer;
    ASSERT_TRUE(mixer.Init_MixerControl() && mixer.Init_VolumeControl() &&
                mixer.Init_VUMeterControl());
    const auto waitForLevel = [&](double share) {
        waitUntil([&] {
            return std::fabs(std::abs(mixer.GetVUMeterValue()) / 32768.0 - 0.8 * share) < 0.01;
        });
    };
    const std::tuple<std::int32_t, const char*, double> cases[] = {
        {65535, "on", 1}, {32768, "on", 0.5}, {65535, "off", 0}, {0, "on", 0}};
    for (const auto& [volume, audio, share] : cases) {
        SCOPED_TRACE(volume);
        ASSERT_TRUE(mixer.SetVolumeValue(volume));
        open({}, tests::tone(440, 0.8, 3));
        ASSERT_EQ(MciCommand("set PBWave audio all "s + audio), "");
        const std::size_t played = recorder_->count();
        ASSERT_EQ(MciPlay(alias, -1, 0, -1), "");
        waitForPosition(300);
        waitForLevel(share);
        recorder_->waitForMore(perSecond / 4);
        mixer.SetVolumeValue(0);
        waitForLevel(0);
        MciStop(alias);
        waitForSilence();
        const Samples heard = recordedSince(played);
        EXPECT_EQ(tests::startOfSound(heard) == heard.size(), share == 0);
        EXPECT_NEAR(*std::max_element(heard.begin(), heard.end()), 0.8 * share, 0.02);
        for (const auto piece : tests::soundsOf(heard, 2))
            for (std::size_t i = 1; i < piece.size(); ++i)
                ASSERT_LT(std::fabs(piece[i] - piece[i - 1]), 0.06) << "it clicks";
    }
    mixer.SetVolumeValue(65535);
}

TEST_F(Sound, ChangesSpeedButNotPitch) {
    open({}, tests::tone(440, 0.5, 1.5));
    for (const int tempo : {50, 200, 200}) {
        SCOPED_TRACE(tempo);
        const std::size_t start = recorder_->count();
        ASSERT_EQ(MciPlay(alias, -1, 0, -1), "");
        ASSERT_EQ(MciCommand("set PBWave tempo " + std::to_string(tempo)), "");
        EXPECT_EQ(MciGetLength(alias), 1500);
        playToEnd();
        EXPECT_EQ(MciGetPosition(alias), 1500);
        const Samples heard = recordedSince(start);
        double seconds = 0;
        for (const auto piece : tests::soundsOf(heard, perSecond / 200)) {
            seconds += static_cast<double>(piece.size()) / perSecond;
            if (piece.size() > perSecond / 10) {
                EXPECT_NEAR(tests::frequencyOf(piece, perSecond), 440, 15);
            }
        }
        EXPECT_NEAR(seconds * tempo / 100, 1.5, 0.2);
    }
}

TEST_F(Sound, PlaysTwoFilesUntilTheOutputVanishes) {
    open({}, tests::tone(440, 0.3, 20));
    ASSERT_EQ(MciOpen("Two", sounds_.path("a dictation.WAV"), "waveaudio"), "");
    ASSERT_EQ(MciPlay(alias, -1, 0, -1), "");
    ASSERT_EQ(MciPlay("Two", -1, 0, -1), "");
    waitForPosition(300);
    EXPECT_EQ(MciGetMode("Two"), "playing");
    EXPECT_EQ(MciClose("Two"), "");
    EXPECT_EQ(MciGetMode(alias), "playing");

    server_->vanish();
    waitUntil([] { return MciGetMode(alias) == "ERROR"; });
    const std::string lost = "There is a problem with your media device. Make sure it is working "
                             "correctly or contact the device manufacturer.";
    EXPECT_EQ(MciResume(alias), lost);
    EXPECT_EQ(MciPause(alias), lost);
    EXPECT_LT(MciGetPosition(alias), 20000);
    EXPECT_NE(MciPlay(alias, -1, -1, -1), "") << "nobody is there to play";
    EXPECT_EQ(MciGetMode(alias), "stopped");

    recorder_.reset();
    server_.reset();
    SetUp();
    EXPECT_EQ(MciPlay(alias, -1, -1, -1), "");
    waitForPosition(300);
    EXPECT_EQ(MciGetMode(alias), "playing");
}

// Speech with a peak in it, three times as loud.
TEST_F(Sound, IsBoostedWithoutClipping) {
    const Samples soft = tests::tone(440, 0.1, 1);
    const Samples peak = tests::tone(440, 0.9, 0.5);
    const auto boosted = [this](const Samples& samples) {
        open({}, samples);
        sound::WaveControl::instance().setShape({300, false, false, false});
        const std::size_t start = recorder_->count();
        EXPECT_EQ(MciPlay(alias, -1, 0, -1), "");
        playToEnd();
        return recordedSince(start);
    };
    std::mt19937 random{1};
    std::uniform_real_distribution<float> values(-0.5F, 0.5F);
    Samples noise(4000);
    std::generate(noise.begin(), noise.end(), [&] { return values(random); });
    Samples clipped = tests::tone(1300, 3, 0.5);
    for (float& sample : clipped)
        sample = std::clamp(sample, -1.0F, 1.0F);
    for (const float sample : boosted(tests::joined({noise, clipped})))
        ASSERT_LT(std::fabs(sample), 1) << "between the file's samples";

    const Samples heard = boosted(tests::joined({soft, peak, soft, peak}));
    const auto [least, most] = std::minmax_element(heard.begin(), heard.end());
    EXPECT_NEAR(*most, 0.89, 0.03);
    EXPECT_NEAR(*least, -0.89, 0.03);
    // A clipped sine is flat on top.
    EXPECT_LT(std::count_if(heard.begin(), heard.end(), [](float s) { return s > 0.885; }),
              static_cast<std::ptrdiff_t>(heard.size() / 12));
    std::size_t tripled = 0;
    for (std::size_t i = 0; i + perSecond / 100 < heard.size(); i += perSecond / 100) {
        const auto piece = std::span(heard).subspan(i, perSecond / 100);
        tripled +=
            std::fabs(*std::max_element(piece.begin(), piece.end()) - 0.3F) < 0.02F ? 1U : 0U;
    }
    EXPECT_GT(tripled, 80U) << "what is soft is three times as loud";
}

TEST_F(Sound, SkipsSilenceAndKnowsWhereItIs) {
    const Samples voice = tests::tone(440, 0.5, 1);
    for (const int tempo : {100, 150}) {
        SCOPED_TRACE(tempo);
        open({}, tests::joined({voice, Samples(8000 * 4), voice}));
        ASSERT_EQ(MciCommand("set PBWave tempo " + std::to_string(tempo)), "");
        sound::WaveControl::instance().setShape({100, false, false, true});
        const std::size_t start = recorder_->count();
        ASSERT_EQ(MciPlay(alias, -1, 0, -1), "");
        waitForPosition(5000); // the second voice is heard
        playToEnd();
        EXPECT_EQ(MciGetPosition(alias), 6000);
        const Samples heard = recordedSince(start);
        const auto voices = tests::soundsOf(heard, perSecond / 10);
        ASSERT_EQ(voices.size(), 2U);
        const double pause = static_cast<double>(voices[1].data() - voices[0].data()) / perSecond -
                             static_cast<double>(voices[0].size()) / perSecond;
        EXPECT_NEAR(pause * tempo / 100, 0.35, 0.1);
    }
}

} // namespace
} // namespace ov::modMultimedia
