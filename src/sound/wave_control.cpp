// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "sound/wave_control.h"

#include <algorithm>
#include <cstdlib>

namespace ov::sound {

namespace {

constexpr std::int64_t meterWindow = 50'000'000; // as often as meters are drawn

} // namespace

WaveControl& WaveControl::instance() {
    static WaveControl control;
    return control;
}

SoundShape WaveControl::shape() const noexcept {
    return {boost_, evensOut_, cutsRumble_, skipsSilence_};
}

void WaveControl::setShape(const SoundShape& shape) noexcept {
    boost_ = std::clamp(shape.boost, SoundShape::usualBoost, SoundShape::largestBoost);
    evensOut_ = shape.evensOut;
    cutsRumble_ = shape.cutsRumble;
    skipsSilence_ = shape.skipsSilence;
}

std::int32_t WaveControl::peak() {
    const std::int64_t now = steadyNanoseconds();
    const std::lock_guard<std::mutex> lock(mutex_);
    std::int32_t largest = 0;
    for (const WaveTimeline* timeline : timelines_) {
        const std::int32_t peak = timeline->peak(now - meterWindow, now);
        if (std::abs(peak) > std::abs(largest))
            largest = peak;
    }
    return largest;
}

void WaveControl::add(const WaveTimeline& timeline) {
    const std::lock_guard<std::mutex> lock(mutex_);
    timelines_.push_back(&timeline);
}

void WaveControl::remove(const WaveTimeline& timeline) {
    const std::lock_guard<std::mutex> lock(mutex_);
    std::erase(timelines_, &timeline);
}

} // namespace ov::sound
