// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "sound/effects/silence_skipper.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace ov::sound {

namespace {

constexpr int slicesPerSecond = 100;
// Of a pause: 350 ms are left, as between two sentences.
constexpr std::size_t heardSlices = 20;
constexpr std::size_t heldSlices = 15;

// Root mean squares, full scale is 1. A room hums, so what is silent is told from the least there
// is, which is forgotten by 2 dB in a second.
constexpr float quietestFloor = 1e-4F;
constexpr float rise = 1.0023F;       // a slice
constexpr float aboveFloor = 2.5F;    // 8 dB
constexpr float leastLimit = 0.0018F; // -55 dB
constexpr float mostLimit = 0.0126F;  // -38 dB

} // namespace

SilenceSkipper::SilenceSkipper(int rate, int channels)
    : channels_(static_cast<std::size_t>(channels)),
      sliceSamples_(static_cast<std::size_t>(rate / slicesPerSecond) * channels_),
      floor_(mostLimit / aboveFloor) {}

void SilenceSkipper::start(double frame) {
    silentSlices_ = 0;
    begun_.clear();
    held_.clear();
    ready_.clear();
    joins_.assign(1, {frame, frame});
    heardEnd_ = frame;
    place_ = frame;
}

void SilenceSkipper::put(std::span<const float> samples) {
    if (!skips_) {
        finish();
        silentSlices_ = 0;
        hear(samples);
        return;
    }
    while (!samples.empty()) {
        const auto part = samples.first(std::min(samples.size(), sliceSamples_ - begun_.size()));
        begun_.insert(begun_.end(), part.begin(), part.end());
        samples = samples.subspan(part.size());
        if (begun_.size() < sliceSamples_)
            return;
        putSlice(begun_);
        begun_.clear();
    }
}

void SilenceSkipper::finish() {
    hearHeld();
    hear(begun_);
    begun_.clear();
}

void SilenceSkipper::putSlice(std::span<const float> slice) {
    silentSlices_ = isSilent(slice) ? silentSlices_ + 1 : 0;
    if (silentSlices_ <= heardSlices) {
        hearHeld();
        hear(slice);
        return;
    }
    held_.emplace_back(slice.begin(), slice.end());
    if (held_.size() <= heldSlices)
        return;
    place_ += framesOf(held_.front());
    if (joins_.back().heard < heardEnd_)
        joins_.push_back({heardEnd_, place_});
    else
        joins_.back().place = place_;
    held_.pop_front();
}

bool SilenceSkipper::isSilent(std::span<const float> slice) noexcept {
    const float power = std::inner_product(slice.begin(), slice.end(), slice.begin(), 0.0F);
    const float loudness = std::sqrt(power / static_cast<float>(slice.size()));
    floor_ = std::clamp(loudness, quietestFloor, floor_ * rise);
    return loudness < std::clamp(floor_ * aboveFloor, leastLimit, mostLimit);
}

void SilenceSkipper::hear(std::span<const float> slice) {
    ready_.insert(ready_.end(), slice.begin(), slice.end());
    heardEnd_ += framesOf(slice);
    place_ += framesOf(slice);
}

void SilenceSkipper::hearHeld() {
    for (const Slice& slice : held_)
        hear(slice);
    held_.clear();
}

std::size_t SilenceSkipper::take(std::span<float> samples) {
    const std::size_t count = std::min(samples.size() / channels_ * channels_, ready_.size());
    std::copy_n(ready_.begin(), count, samples.begin());
    ready_.erase(ready_.begin(), ready_.begin() + static_cast<std::ptrdiff_t>(count));
    return count / channels_;
}

double SilenceSkipper::placeOf(double heard) {
    while (joins_.size() > 1 && joins_[1].heard <= heard)
        joins_.pop_front();
    return joins_.front().place + heard - joins_.front().heard;
}

} // namespace ov::sound
