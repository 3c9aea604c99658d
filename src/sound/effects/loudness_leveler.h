// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "sound/sound_libraries.h"

#include <cstddef>
#include <deque>
#include <memory>
#include <span>

// Slowly turns sound up or down until it is as loud as every other: measured after EBU R 128, by
// its gating blocks of 400 ms, of which pauses do not count. Used by one thread.

namespace ov::sound {

class LoudnessLeveler {
public:
    // Quieter than broadcasts, so that a voice's peaks seldom need the limiter; louder than most
    // dictations are.
    static constexpr double target = -20; // LUFS

    // Frames a second. Below there is too little of a voice to be measured.
    static constexpr int slowestRate = 4000;

    LoudnessLeveler(int rate, int channels);

    // Takes what is to come without following it, so that it begins as loud as it goes on.
    void expect(std::span<const float> samples) { measure(samples); }
    // No voice has been measured yet.
    bool isNew() const noexcept { return voice_.empty(); }

    // The gain, linear, for this piece, which is the next.
    float follow(std::span<const float> samples);

private:
    void measure(std::span<const float> samples);
    void addBlock(double loudness);
    double meanLoudness() const; // LUFS
    double wantedGain() const;   // dB

    std::size_t channels_;
    std::size_t rate_;
    std::unique_ptr<LoudnessMeter> meter_;
    std::size_t sinceBlock_ = 0; // frames
    std::deque<double> voice_;   // the power of the last blocks that count, 1 at 0 LUFS
    std::size_t quiet_ = 0;      // blocks since that are as of one who whispers
    double gain_ = 0;            // dB
    bool hasBegun_ = false;
};

} // namespace ov::sound
