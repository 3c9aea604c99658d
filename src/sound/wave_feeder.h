// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "sound/effects/silence_skipper.h"
#include "sound/sound_libraries.h"
#include "sound/wave_file.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

// Turns a stretch of a file into the samples that are to be played, faster or slower at the same
// pitch, with or without its pauses. Used by one thread.

namespace ov::sound {

constexpr int slowestTempo = 50; // percent of the recorded speed
constexpr int usualTempo = 100;
constexpr int fastestTempo = 200;

class WaveFeeder {
public:
    explicit WaveFeeder(WaveFile& file);
    ~WaveFeeder();
    WaveFeeder(const WaveFeeder&) = delete;
    WaveFeeder& operator=(const WaveFeeder&) = delete;

    // Frames of the file; what is missing at its end is left out.
    void start(double from, double to, int tempo);
    // Of what has not been read yet.
    void setSkipsSilence(bool skips) noexcept { skipper_.setSkips(skips); }

    // The next piece, interleaved.
    struct Piece {
        std::size_t frames = 0; // fewer than asked for: the end, or a long pause that is skipped
        double from = 0;        // what they are in the file
        double to = 0;
        bool last = false;
        bool failed = false; // the last, because the file cannot be read on
    };
    Piece read(std::span<float> samples);

private:
    std::size_t readFile(std::span<float> samples);
    std::size_t readHeard(std::span<float> samples);
    std::size_t readStretched(std::span<float> samples);
    bool feedStretcher();

    WaveFile& file_;
    std::unique_ptr<SoundStretcher> stretcher_; // made when first needed
    SilenceSkipper skipper_;
    std::vector<float> read_;
    std::vector<float> input_; // of the stretcher
    int tempo_ = usualTempo;
    double position_ = 0; // of the next frame to play
    double heard_ = 0;    // the same, counted without what is skipped
    double end_ = 0;
    std::int64_t left_ = 0; // frames still to be read from the file
    bool flushed_ = false;
    bool failed_ = false;
};

} // namespace ov::sound
