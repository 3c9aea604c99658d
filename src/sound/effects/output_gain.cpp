// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "sound/effects/output_gain.h"

#include <algorithm>
#include <cmath>

namespace ov::sound {

namespace {

constexpr float fullScale = 1;
constexpr float raisedCeiling = 0.891F; // -1 dB: no two filters draw the same curve
constexpr float release = 1.06F;        // a chunk: half a decibel, 15 in a second

// The largest gain that keeps such peaks below the ceiling. What is not raised stays as it is in
// the file.
float largestGain(const ChunkPeaks& peaks, float gain) noexcept {
    const float ceiling = gain > 1 ? raisedCeiling : fullScale;
    const float peak = gain > 1 ? std::max(peaks.ofSamples, peaks.between) : peaks.ofSamples;
    return peak * gain > ceiling ? ceiling / peak : gain;
}

} // namespace

float largestMagnitude(std::span<const float> samples) noexcept {
    float largest = 0;
    for (const float sample : samples)
        largest = std::max(largest, std::abs(sample));
    return largest;
}

void OutputGain::startAt(float gain) noexcept {
    gain_ = gain;
    limit_ = 1;
}

float OutputGain::apply(std::span<float> samples, float gain, const ChunkPeaks& peaks,
                        const ChunkPeaks& next) noexcept {
    const float allowed = largestGain(peaks, gain);
    const float needed = std::min(allowed, largestGain(next, gain));
    limit_ = gain > 0 ? std::min(needed / gain, limit_ * release) : 1;
    const float end = gain * std::min(limit_, 1.0F);
    // Nobody foresaw a peak behind a disk that stalled, or before the volume went up.
    gain_ = std::min(gain_, std::max(largestGain(peaks, std::max(gain, gain_)), 0.0F));
    const float step = (end - gain_) / static_cast<float>(std::max<std::size_t>(samples.size(), 1));
    float extreme = 0;
    for (float& sample : samples) {
        gain_ += step;
        sample *= gain_;
        if (std::abs(sample) > std::abs(extreme))
            extreme = sample;
    }
    gain_ = end;
    return extreme;
}

} // namespace ov::sound
