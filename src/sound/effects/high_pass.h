// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <span>

// A Butterworth high-pass of fourth order at 80 Hz, below which no voice goes: takes off 16 dB at
// 50 Hz and 40 dB at 25 Hz. Two second-order sections, coefficients by the bilinear transform.

namespace ov::sound {

class HighPass {
public:
    HighPass(int rate, int channels) noexcept;

    // Interleaved, in place; goes on where it ended. Never allocates.
    void run(std::span<float> samples) noexcept;
    // What comes is not what followed.
    void forget() noexcept { memory_ = {}; }

private:
    static constexpr std::size_t sections = 2;
    static constexpr std::size_t mostChannels = 2;
    struct Section { // y = b0 (x - 2 x1 + x2) - a1 y1 - a2 y2
        double b0 = 0;
        double a1 = 0;
        double a2 = 0;
    };
    struct Memory {
        double first = 0;
        double second = 0;
    };

    static double pass(double sample, const Section& section, Memory& memory) noexcept;

    std::array<Section, sections> sections_;
    std::array<std::array<Memory, mostChannels>, sections> memory_{};
    std::size_t channels_;
};

} // namespace ov::sound
