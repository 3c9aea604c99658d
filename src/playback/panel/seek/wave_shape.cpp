// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "playback/panel/seek/wave_shape.h"

#include <algorithm>
#include <cstddef>

namespace ov {

namespace {

constexpr int silent = 330; // of 32768: -40 dB

bool isSilent(const sound::WavePeaks& peaks) {
    return peaks.highest < silent && peaks.lowest > -silent;
}

} // namespace

sound::WavePeaks WaveShape::between(double from, double to) const {
    sound::WavePeaks all;
    const auto count = static_cast<double>(peaks_.size());
    const auto begin = static_cast<std::size_t>(std::clamp(from, 0.0, 1.0) * count);
    const auto end = static_cast<std::size_t>(std::clamp(to, 0.0, 1.0) * count);
    for (std::size_t i = begin; i < std::min(std::max(end, begin + 1), peaks_.size()); ++i) {
        all.lowest = std::min(all.lowest, peaks_[i].lowest);
        all.highest = std::max(all.highest, peaks_[i].highest);
    }
    return all;
}

std::vector<WaveShape::Silence> WaveShape::silences(double least) const {
    std::vector<Silence> found;
    const auto count = static_cast<double>(peaks_.size());
    for (auto begin = peaks_.begin(); begin != peaks_.end();) {
        begin = std::find_if(begin, peaks_.end(), isSilent);
        const auto end = std::find_if_not(begin, peaks_.end(), isSilent);
        const Silence silence{static_cast<double>(begin - peaks_.begin()) / count,
                              static_cast<double>(end - peaks_.begin()) / count};
        if (silence.to - silence.from >= least && begin != end)
            found.push_back(silence);
        begin = end;
    }
    return found;
}

} // namespace ov
