// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "sound/effects/loudness_leveler.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace ov::sound {

namespace {

constexpr std::size_t blocksPerSecond = 10; // they overlap by three quarters
constexpr std::size_t rememberedBlocks = 20 * blocksPerSecond;
constexpr std::size_t leastVoice = blocksPerSecond; // a knock on the table is shorter
constexpr std::size_t afterKnock = 2 * blocksPerSecond;
constexpr std::size_t longestPause = 10 * blocksPerSecond; // then it is somebody who whispers
constexpr double quietest = -58;                           // LUFS: what is quieter is no voice
constexpr double relativeGate = 10;                        // LU below the mean: a pause
constexpr double roomGate = 20;     // what is never a voice beside the one that was heard
constexpr double largestRaise = 35; // dB
constexpr double largestCut = 20;
constexpr double upSlope = 2; // dB in a second
constexpr double downSlope = 6;

} // namespace

LoudnessLeveler::LoudnessLeveler(int rate, int channels)
    : channels_(static_cast<std::size_t>(channels)),
      rate_(static_cast<std::size_t>(rate)),
      meter_(soundLibraries().measureLoudness(rate, channels)) {}

float LoudnessLeveler::follow(std::span<const float> samples) {
    measure(samples);
    const double seconds =
        static_cast<double>(samples.size() / channels_) / static_cast<double>(rate_);
    const double wanted = wantedGain();
    gain_ = hasBegun_ ? std::clamp(wanted, gain_ - downSlope * seconds, gain_ + upSlope * seconds)
                      : wanted;
    hasBegun_ = true;
    return static_cast<float>(std::pow(10, gain_ / 20));
}

void LoudnessLeveler::measure(std::span<const float> samples) {
    const std::size_t blockStep = rate_ / blocksPerSecond;
    while (samples.size() >= channels_) {
        const std::size_t frames = std::min(samples.size() / channels_, blockStep - sinceBlock_);
        meter_->put(samples.data(), frames);
        samples = samples.subspan(frames * channels_);
        sinceBlock_ = (sinceBlock_ + frames) % blockStep;
        if (sinceBlock_ == 0)
            addBlock(meter_->momentary());
    }
}

void LoudnessLeveler::addBlock(double loudness) {
    if (loudness < quietest)
        return;
    if (!isNew() && loudness < meanLoudness() - relativeGate) {
        const bool wasVoice = voice_.size() >= leastVoice;
        if (wasVoice && loudness < meanLoudness() - roomGate)
            return;
        if (++quiet_ > (wasVoice ? longestPause : afterKnock))
            voice_.clear();
        return;
    }
    quiet_ = 0;
    voice_.push_back(std::pow(10, loudness / 10));
    if (voice_.size() > rememberedBlocks)
        voice_.pop_front();
}

double LoudnessLeveler::meanLoudness() const {
    const double sum = std::accumulate(voice_.begin(), voice_.end(), 0.0);
    return 10 * std::log10(sum / static_cast<double>(voice_.size()));
}

double LoudnessLeveler::wantedGain() const {
    return isNew() ? gain_ : std::clamp(target - meanLoudness(), -largestCut, largestRaise);
}

} // namespace ov::sound
