// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <initializer_list>
#include <span>
#include <vector>

// What is needed to compare recorded sound with a file.

namespace ov::tests {

// The same in every channel. It may rise, by so many Hz a second.
inline std::vector<float> tone(double frequency, double loudness, double seconds, int channels = 1,
                               int rate = 8000, double rise = 0) {
    std::vector<float> samples;
    for (int i = 0; i < static_cast<int>(seconds * rate); ++i) {
        const double time = static_cast<double>(i) / rate;
        const double sample = std::sin(2 * M_PI * (frequency + rise / 2 * time) * time);
        samples.insert(samples.end(), static_cast<std::size_t>(channels),
                       static_cast<float>(loudness * sample));
    }
    return samples;
}

inline std::vector<float> joined(std::initializer_list<std::vector<float>> parts) {
    std::vector<float> all;
    for (const std::vector<float>& part : parts)
        all.insert(all.end(), part.begin(), part.end());
    return all;
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

// In Hz, by the crossings of zero.
inline double frequencyOf(std::span<const float> sound, double rate) {
    double first = 0;
    double last = 0;
    int periods = -1;
    for (std::size_t i = 1; i < sound.size(); ++i)
        if (sound[i - 1] < 0 && sound[i] >= 0) {
            last = static_cast<double>(i) - sound[i] / (sound[i] - sound[i - 1]);
            if (++periods == 0)
                first = last;
        }
    return periods < 1 ? 0 : periods / (last - first) * rate;
}

} // namespace ov::tests
