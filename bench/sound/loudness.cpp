// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// ovbench_loudness FILE...: how loud each sound file is, and how loud after it has been evened out,
// in LUFS (EBU R 128), with the largest sample. Nothing is heard.

#include "sound/effects/loudness_leveler.h"
#include "sound/effects/output_gain.h"
#include "sound/media.h"
#include "sound/wave_file.h"
#include "sound/wave_output.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <ebur128.h>
#include <memory>
#include <utility>
#include <vector>

namespace {

using namespace ov::sound;

struct Loudness {
    explicit Loudness(const WaveFile& file)
        : state(ebur128_init(static_cast<unsigned int>(file.channels()),
                             static_cast<unsigned long>(file.layout().rate), EBUR128_MODE_I)) {}
    ~Loudness() { ebur128_destroy(&state); }
    Loudness(const Loudness&) = delete;
    Loudness& operator=(const Loudness&) = delete;

    double integrated() const {
        double loudness = 0;
        ebur128_loudness_global(state, &loudness);
        return loudness;
    }
    ebur128_state* state;
};

// As WavePlayer does it, in chunks of the output.
void measure(const char* path) {
    std::unique_ptr<WaveFile> file;
    if (WaveFile::open(path, file) != media_error::none) {
        std::printf("%s: cannot be read\n", path);
        return;
    }
    const auto channels = static_cast<std::size_t>(file->channels());
    const int rate = file->layout().rate;
    const Loudness before(*file);
    const Loudness after(*file);
    LoudnessLeveler leveler(rate, file->channels());
    std::vector<float> ahead(static_cast<std::size_t>(rate) * channels * 10);
    const std::size_t known = file->read(ahead);
    leveler.expect(std::span(ahead).first(known * channels));
    file->seek(0);
    OutputGain gain;
    const auto meter = soundLibraries().measurePeaks(rate, file->channels());
    const auto peaksOf = [&](std::vector<float>& samples) {
        return ChunkPeaks{largestMagnitude(samples),
                          meter->peak(samples.data(), samples.size() / channels)};
    };
    float largest = 0;
    std::vector<float> next(WaveOutput::chunkFrames(rate) * channels);
    next.resize(file->read(next) * channels);
    ChunkPeaks follow = peaksOf(next);
    while (!next.empty()) {
        std::vector<float> samples = next;
        next.resize(WaveOutput::chunkFrames(rate) * channels);
        next.resize(file->read(next) * channels);
        ebur128_add_frames_float(before.state, samples.data(), samples.size() / channels);
        const float level = leveler.follow(samples);
        const ChunkPeaks peaks = std::exchange(follow, peaksOf(next));
        largest = std::max(largest, std::abs(gain.apply(samples, level, peaks, follow)));
        ebur128_add_frames_float(after.state, samples.data(), samples.size() / channels);
    }
    std::printf("%-50s %7.1f s %7.1f -> %6.1f LUFS, largest %.3f\n", path,
                file->layout().length / rate, before.integrated(), after.integrated(), largest);
}

} // namespace

int main(int count, char** arguments) {
    for (int i = 1; i < count; ++i)
        measure(arguments[i]);
}
