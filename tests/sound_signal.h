// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <span>
#include <vector>

// What is needed to compare recorded sound with a file.

namespace ov::tests {

// Mono samples of interleaved ones.
inline std::vector<float> mono(const std::vector<float>& samples, int channels) {
    std::vector<float> result;
    for (std::size_t i = 0; i + static_cast<std::size_t>(channels) <= samples.size();
         i += static_cast<std::size_t>(channels)) {
        float sum = 0;
        for (std::size_t c = 0; c < static_cast<std::size_t>(channels); ++c)
            sum += samples[i + c];
        result.push_back(sum / static_cast<float>(channels));
    }
    return result;
}

// Straight lines between samples; good enough for what lies far below the file's rate.
inline std::vector<float> resampled(const std::vector<float>& samples, int from, int to) {
    std::vector<float> result;
    for (std::size_t i = 0;; ++i) {
        const double place = static_cast<double>(i) * from / to;
        const auto left = static_cast<std::size_t>(place);
        if (left + 1 >= samples.size())
            return result;
        const auto part = static_cast<float>(place - static_cast<double>(left));
        result.push_back(samples[left] * (1 - part) + samples[left + 1] * part);
    }
}

// 1 for the same shape, whatever the loudness.
inline double correlation(std::span<const float> a, std::span<const float> b) {
    double ab = 0;
    double aa = 1e-12;
    double bb = 1e-12;
    for (std::size_t i = 0; i < std::min(a.size(), b.size()); ++i) {
        ab += static_cast<double>(a[i]) * b[i];
        aa += static_cast<double>(a[i]) * a[i];
        bb += static_cast<double>(b[i]) * b[i];
    }
    return ab / std::sqrt(aa * bb);
}

// The first sample that is no silence.
inline std::size_t startOfSound(std::span<const float> samples, std::size_t from = 0) {
    const auto found = std::find_if(samples.begin() + static_cast<std::ptrdiff_t>(from),
                                    samples.end(), [](float s) { return std::fabs(s) > 1e-3F; });
    return static_cast<std::size_t>(found - samples.begin());
}

// What is heard between silences of at least that many samples.
inline std::vector<std::span<const float>> soundsOf(std::span<const float> samples,
                                                    std::size_t silence) {
    std::vector<std::span<const float>> sounds;
    for (std::size_t begin = startOfSound(samples); begin < samples.size();) {
        std::size_t end = begin;
        std::size_t next = begin;
        for (; next < samples.size() && next < end + silence; next = startOfSound(samples, end))
            end = next + 1;
        sounds.push_back(samples.subspan(begin, end - begin));
        begin = next;
    }
    return sounds;
}

struct Match {
    std::size_t place = 0;
    double correlation = 0;
};

// Where `piece` lies best in `whole`, looked for from `first` to `last`.
inline Match findPiece(std::span<const float> piece, std::span<const float> whole,
                       std::size_t first, std::size_t last) {
    Match best;
    for (std::size_t at = first; at <= last && at + piece.size() <= whole.size(); ++at) {
        // Coarse and quick, then exact where it looks promising.
        double both = 0;
        double ofPiece = 0;
        double there = 0;
        for (std::size_t i = 0; i < piece.size(); i += 16) {
            both += static_cast<double>(piece[i]) * whole[at + i];
            ofPiece += static_cast<double>(piece[i]) * piece[i];
            there += static_cast<double>(whole[at + i]) * whole[at + i];
        }
        if (both <= 0 || both * both < 0.5 * ofPiece * there)
            continue;
        const double found = correlation(piece, whole.subspan(at, piece.size()));
        if (found > best.correlation)
            best = {at, found};
    }
    return best;
}

} // namespace ov::tests
