// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <stop_token>
#include <string_view>
#include <vector>

// The shape of a sound file, to be drawn behind a slider.

namespace ov::sound {

// The lowest and the highest sample of a stretch; both 0 in silence. All channels together.
struct WavePeaks {
    std::int16_t lowest = 0;
    std::int16_t highest = 0;
    bool operator==(const WavePeaks&) const = default;
};

// How finely: so many peaks for a second, but never fewer than `least` or more than 200,000.
struct OverviewDetail {
    std::size_t least = 0;
    std::size_t perSecond = 0;
};

// The peaks of stretches of equal length that make up the file, as long as its header says; what
// is missing at its end is silence. Reads the whole file piece by piece, in constant
// memory: call it from a thread of its own (some seconds for a two-hour file) and keep the
// result. Every call opens the file for itself, so it may be played meanwhile.
//
// `path` is that of files.h. False, with `peaks` empty, when the file is none that can be played,
// could not be read to its end, or `stop` was asked for.
bool readWaveOverview(std::string_view path, const OverviewDetail& detail,
                      const std::stop_token& stop, std::vector<WavePeaks>& peaks);

} // namespace ov::sound
