// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// What is done to sound behind the volume, without an output.

#include "sound/effects/high_pass.h"
#include "sound/effects/loudness_leveler.h"
#include "sound/effects/output_gain.h"
#include "sound/effects/silence_skipper.h"
#include "tests/sound_signal.h"

#include <gtest/gtest.h>

#include <random>

namespace ov::sound {
namespace {

constexpr int rate = 8000;
using Samples = std::vector<float>;
using tests::joined;
using tests::tone;

float peakOf(std::span<const float> samples) {
    float peak = 0;
    for (const float sample : samples)
        peak = std::max(peak, std::fabs(sample));
    return peak;
}

TEST(OutputGain, LeavesAloneWhatItDoesNotRaise) {
    OutputGain gain;
    Samples samples = tone(440, 1, 0.1);
    const Samples before = samples;
    EXPECT_EQ(std::fabs(gain.apply(samples, 1, {1}, {1})), peakOf(before));
    EXPECT_EQ(samples, before);
    gain.apply(samples, 0.5, {1}, {1});
    samples = before;
    gain.apply(samples, 0.5, {1}, {1});
    for (std::size_t i = 0; i < samples.size(); ++i)
        ASSERT_FLOAT_EQ(samples[i], before[i] / 2);
}

// Speech jumps from whispers to shouts; a chunk is known before it is heard, but not always.
TEST(OutputGain, NeverClipsAndNeverJumps) {
    std::mt19937 random{7};
    std::uniform_real_distribution<float> loudness(0.01F, 1);
    for (const bool knowsNext : {true, false}) {
        SCOPED_TRACE(knowsNext);
        OutputGain gain;
        float before = 1;
        std::vector<float> peaks(300);
        std::generate(peaks.begin(), peaks.end(), [&] { return loudness(random); });
        for (std::size_t i = 0; i + 1 < peaks.size(); ++i) {
            Samples samples(266, peaks[i]); // so that each sample shows the gain
            const float wanted = i < 100 ? 1 : i < 200 ? 3 : 0.7F;
            const float peak =
                gain.apply(samples, wanted, {peaks[i]}, {knowsNext ? peaks[i + 1] : 0});
            EXPECT_LE(peak, wanted > 1 ? 0.8911F : 1);
            for (const float sample : samples) {
                if (knowsNext && i != 200) { // the ceiling itself goes up
                    ASSERT_LT(std::fabs(sample / peaks[i] - before), 0.02) << i;
                }
                before = sample / peaks[i];
            }
        }
    }
}

TEST(OutputGain, GivesBackWhatAPeakTookWithinSeconds) {
    OutputGain gain;
    Samples peak(266, 1);
    gain.apply(peak, 2, {1}, {1});
    Samples quiet;
    for (int chunk = 0; chunk < 60; ++chunk) {
        quiet.assign(266, 0.1F);
        gain.apply(quiet, 2, {0.1F}, {0.1F});
        EXPECT_LT(chunk == 0 ? quiet.front() : 0, 0.1F);
    }
    EXPECT_FLOAT_EQ(quiet.back(), 0.2F);
}

TEST(HighPass, TakesOffRumbleButNoVoice) {
    for (const auto& [frequency, least, most] : {std::tuple{25.0, 0.0, 0.012},
                                                 {50.0, 0.12, 0.18},
                                                 {80.0, 0.68, 0.74},
                                                 {200.0, 0.98, 1.0}}) {
        SCOPED_TRACE(frequency);
        HighPass highPass(rate, 2);
        Samples samples = tone(frequency, 1, 2, 2);
        for (std::size_t i = 1; i < samples.size(); i += 2)
            samples[i] = 0; // the other channel
        highPass.run(std::span(samples).first(1000));
        highPass.run(std::span(samples).subspan(1000));
        const float peak = peakOf(std::span(samples).last(rate));
        EXPECT_GE(peak, least);
        EXPECT_LE(peak, most);
        for (std::size_t i = 1; i < samples.size(); i += 2)
            ASSERT_EQ(samples[i], 0);
    }
}

// A tone of 997 Hz at full scale is -3 LUFS.
constexpr double atFullScale = -3;

double levelled(LoudnessLeveler& leveler, std::span<const float> samples) {
    float gain = 0;
    for (; !samples.empty(); samples = samples.subspan(std::min<std::size_t>(samples.size(), 266)))
        gain = leveler.follow(samples.first(std::min<std::size_t>(samples.size(), 266)));
    return 20 * std::log10(gain);
}

TEST(LoudnessLeveler, MakesEveryVoiceAsLoud) {
    for (const double loudness : {-6.0, -17.0, -30.0, -40.0}) {
        SCOPED_TRACE(loudness);
        LoudnessLeveler leveler(rate, 1);
        const Samples voice = tone(997, std::pow(10, (loudness - atFullScale) / 20), 3);
        leveler.expect(voice);
        EXPECT_FALSE(leveler.isNew());
        EXPECT_NEAR(20 * std::log10(leveler.follow(std::span(voice).first(266))),
                    LoudnessLeveler::target - loudness, 0.3)
            << "from the first moment on";
        EXPECT_NEAR(levelled(leveler, voice), LoudnessLeveler::target - loudness, 0.3);
    }
}

TEST(LoudnessLeveler, FollowsVoicesSlowlyAndNoPauses) {
    LoudnessLeveler leveler(rate, 1);
    EXPECT_EQ(levelled(leveler, tone(997, 1e-4, 5)), 0) << "nothing to hear";
    EXPECT_TRUE(leveler.isNew());
    const Samples voice = tone(997, 0.1, 10); // -23 LUFS
    EXPECT_NEAR(levelled(leveler, voice), 3, 0.5);
    EXPECT_NEAR(levelled(leveler, tone(997, 0.009, 8)), 3, 0.5) << "a pause is no voice";
    EXPECT_NEAR(levelled(leveler, tone(997, 0.008, 60)), 3, 0.5) << "nor is the room, however long";
    const Samples whisper = tone(997, 0.02, 14); // -37 LUFS
    const double later = levelled(leveler, whisper);
    EXPECT_GT(later, 5) << "but who goes on like that is";
    EXPECT_LT(later, 14) << "slowly";
    EXPECT_NEAR(levelled(leveler, tone(997, 0.02, 20)), 17, 0.5);
    EXPECT_LT(levelled(leveler, voice), 7) << "down again";
    LoudnessLeveler other(rate, 1);
    EXPECT_LT(levelled(other, tone(997, 1, 0.6)), 0) << "a knock";
    EXPECT_NEAR(levelled(other, tone(997, 0.02, 20)), 17, 0.5) << "is soon forgotten";
}

// What is heard, and the place of each frame of it.
std::pair<Samples, std::vector<double>> skip(std::span<const float> samples, bool skips,
                                             double start = 0) {
    SilenceSkipper skipper(rate, 1);
    skipper.start(start);
    skipper.setSkips(skips);
    std::pair<Samples, std::vector<double>> result;
    double heard = start;
    const auto take = [&] {
        Samples piece(100);
        for (std::size_t got = 0; (got = skipper.take(piece)) > 0;) {
            result.first.insert(result.first.end(), piece.begin(),
                                piece.begin() + static_cast<std::ptrdiff_t>(got));
            for (std::size_t i = 0; i < got; ++i)
                result.second.push_back(skipper.placeOf(heard++));
        }
    };
    for (; !samples.empty();
         samples = samples.subspan(std::min<std::size_t>(samples.size(), 777))) {
        skipper.put(samples.first(std::min<std::size_t>(samples.size(), 777)));
        take();
    }
    skipper.finish();
    take();
    EXPECT_EQ(skipper.heardEnd(), heard);
    return result;
}

TEST(SilenceSkipper, ShortensPausesAndKnowsWhereItIs) {
    const Samples voice = tone(440, 0.2, 0.5);
    const std::tuple<const char*, double, double, bool, double> cases[] = {
        // what, seconds between two words, loudness of the room, skips, seconds in all
        {"not wanted", 3, 0, false, 4},     {"a long pause", 3, 0, true, 1.35},
        {"a short one", 0.3, 0, true, 1.3}, {"a room that hums", 3, 0.004, true, 1.35},
        {"a soft voice", 3, 0.03, true, 4}, {"none", 0, 0, true, 1},
        {"only just", 0.36, 0, true, 1.35}};
    for (const auto& [what, pause, loudness, skips, heard] : cases) {
        SCOPED_TRACE(what);
        const Samples samples =
            joined({tone(50, loudness, 2), voice, tone(50, loudness, pause), voice});
        const auto file = std::span(samples).subspan(skips ? 0 : 2 * rate);
        const auto& [samplesHeard, places] = skip(file, skips);
        // The room before the first word, of which the pause's rest is left.
        const double before = !skips ? 0 : loudness == 0.03 ? 2 : 0.35;
        EXPECT_NEAR(static_cast<double>(samplesHeard.size()) / rate, heard + before, 0.05);
        for (std::size_t i = 0; i < samplesHeard.size(); ++i)
            ASSERT_EQ(samplesHeard[i], file[static_cast<std::size_t>(places[i])]) << i;
    }
}

TEST(SilenceSkipper, TurnsOnAndOffWhileItReads) {
    const Samples pause(rate, 0.0F);
    SilenceSkipper skipper(rate, 1);
    skipper.start(1000);
    skipper.setSkips(true);
    skipper.put(pause);
    EXPECT_EQ(skipper.ready(), rate / 5U) << "the end of the pause is held back";
    skipper.setSkips(false);
    skipper.put(pause);
    EXPECT_EQ(skipper.ready(), rate + 350U * rate / 1000);
    Samples heard(skipper.ready());
    skipper.take(heard);
    EXPECT_EQ(skipper.placeOf(skipper.heardEnd()), 1000 + 2 * rate);
}

} // namespace
} // namespace ov::sound
