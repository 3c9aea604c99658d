// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "sound/wave_overview.h"

#include <vector>

namespace ov {

// The shape of a dictation as it is drawn. Places are shares of the whole, 0 to 1.
class WaveShape {
public:
    struct Silence {
        double from = 0;
        double to = 0;
    };

    WaveShape() = default;
    explicit WaveShape(std::vector<sound::WavePeaks> peaks) : peaks_(std::move(peaks)) {}

    // Of all that lies between two places; none where nothing is known.
    sound::WavePeaks between(double from, double to) const;
    // Pauses of at least that length, in order.
    std::vector<Silence> silences(double least) const;

private:
    std::vector<sound::WavePeaks> peaks_;
};

} // namespace ov
