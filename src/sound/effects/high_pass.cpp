// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "sound/effects/high_pass.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace ov::sound {

namespace {

constexpr double cutOff = 80; // Hz
// Of the pole pairs of a Butterworth filter of fourth order.
constexpr std::array<double, 2> qualities{0.54119610, 1.30656296};

} // namespace

HighPass::HighPass(int rate, int channels) noexcept
    : channels_(std::min(static_cast<std::size_t>(channels), mostChannels)) {
    const double angle = 2 * std::numbers::pi * cutOff / rate;
    for (std::size_t i = 0; i < sections; ++i) {
        const double alpha = std::sin(angle) / (2 * qualities[i]);
        const double a0 = 1 + alpha;
        sections_[i] = {(1 + std::cos(angle)) / 2 / a0, -2 * std::cos(angle) / a0,
                        (1 - alpha) / a0};
    }
}

// The transposed direct form, which keeps two numbers and loses few digits.
double HighPass::pass(double sample, const Section& section, Memory& memory) noexcept {
    const double result = section.b0 * sample + memory.first;
    memory.first = -2 * section.b0 * sample - section.a1 * result + memory.second;
    memory.second = section.b0 * sample - section.a2 * result;
    return result;
}

void HighPass::run(std::span<float> samples) noexcept {
    std::size_t channel = 0;
    for (float& sample : samples) {
        double value = sample;
        for (std::size_t i = 0; i < sections; ++i)
            value = pass(value, sections_[i], memory_[i][channel]);
        sample = static_cast<float>(value);
        channel = channel + 1 < channels_ ? channel + 1 : 0;
    }
}

} // namespace ov::sound
