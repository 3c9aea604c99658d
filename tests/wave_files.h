// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <sndfile.h>

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <memory>
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
    SF_INFO info{};
    info.samplerate = kind.rate;
    info.channels = kind.channels;
    info.format =
        (kind.format & SF_FORMAT_TYPEMASK) != 0 ? kind.format : (SF_FORMAT_WAV | kind.format);
    const std::unique_ptr<SNDFILE, int (*)(SNDFILE*)> file(sf_open(path.c_str(), SFM_WRITE, &info),
                                                           sf_close);
    const auto frames = static_cast<sf_count_t>(samples.size()) / kind.channels;
    if (!file || sf_writef_float(file.get(), samples.data(), frames) != frames)
        throw std::runtime_error("cannot write " + path);
}

// All interleaved samples of a sound file.
inline std::vector<float> readWave(const std::string& path) {
    SF_INFO info{};
    const std::unique_ptr<SNDFILE, int (*)(SNDFILE*)> file(sf_open(path.c_str(), SFM_READ, &info),
                                                           sf_close);
    if (!file)
        throw std::runtime_error("cannot read " + path);
    std::vector<float> samples(static_cast<std::size_t>(info.frames * info.channels));
    samples.resize(static_cast<std::size_t>(
        sf_readf_float(file.get(), samples.data(), info.frames) * info.channels));
    return samples;
}

inline std::string readBytes(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

// A number of four bytes at a place in a file's bytes.
inline void setNumber(std::string& bytes, std::size_t at, std::uint32_t number) {
    for (std::size_t i = 0; i < 4; ++i)
        bytes.at(at + i) = static_cast<char>((number >> (8 * i)) & 0xFFU);
}

} // namespace ov::tests
