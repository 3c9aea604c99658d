// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <sndfile.hh>

#include <cmath>
#include <cstddef>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

// Sound files for tests.

namespace ov::tests {

struct WaveKind {
    int format = SF_FORMAT_PCM_16; // libsndfile's sub-format; a WAV file unless it names another
    int rate = 8000;
    int channels = 1;
};

// Frames of a signal that is unlike itself at any other place: a sweep with a rising and falling
// loudness. Full scale is 1; it reaches 0.8.
inline std::vector<float> sweep(int rate, std::size_t frames, int channels = 1) {
    std::vector<float> samples;
    double phase = 0;
    for (std::size_t i = 0; i < frames; ++i) {
        const double time = static_cast<double>(i) / rate;
        phase += 2 * M_PI * (300 + 700 * std::fabs(std::sin(time * 1.7))) / rate;
        const double loudness = 0.45 + 0.35 * std::sin(time * 11.3);
        samples.insert(samples.end(), static_cast<std::size_t>(channels),
                       static_cast<float>(loudness * std::sin(phase)));
    }
    return samples;
}

// Writes interleaved samples as the file of that native path.
inline void writeWave(const std::string& path, const WaveKind& kind,
                      const std::vector<float>& samples) {
    const bool namesFile = (kind.format & SF_FORMAT_TYPEMASK) != 0;
    const int format = namesFile ? kind.format : SF_FORMAT_WAV | kind.format;
    SndfileHandle file(path, SFM_WRITE, format, kind.channels, kind.rate);
    const auto count = static_cast<sf_count_t>(samples.size());
    if (file.write(samples.data(), count) != count)
        throw std::runtime_error("cannot write " + path);
}

inline std::string readBytes(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

} // namespace ov::tests
