// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "sound/wave_overview.h"

#include "sound/media.h"
#include "sound/wave_file.h"

#include <algorithm>
#include <cmath>
#include <span>

namespace ov::sound {

namespace {

constexpr std::size_t samplesPerRead = 16384;

std::int16_t toInteger(float sample) noexcept {
    return static_cast<std::int16_t>(
        std::clamp(std::isnan(sample) ? 0.0F : std::round(sample * 32768), -32768.0F, 32767.0F));
}

void widen(WavePeaks& peaks, std::span<const float> samples) noexcept {
    const auto [lowest, highest] = std::minmax_element(samples.begin(), samples.end());
    peaks.lowest = std::min(peaks.lowest, toInteger(*lowest));
    peaks.highest = std::max(peaks.highest, toInteger(*highest));
}

// Spreads frames, the first of which is `frame`, over the stretches they belong to.
void addFrames(std::span<const float> samples, std::size_t channels, double frame,
               double framesPerStretch, std::vector<WavePeaks>& peaks) {
    while (!samples.empty()) {
        const double position = std::floor(frame / framesPerStretch);
        const auto stretch = std::min(static_cast<std::size_t>(position), peaks.size() - 1);
        const double end = std::ceil(static_cast<double>(stretch + 1) * framesPerStretch);
        const bool isLast = stretch + 1 == peaks.size();
        const auto frames = std::max<std::size_t>(
            isLast ? samples.size() / channels : static_cast<std::size_t>(end - frame), 1);
        const auto piece = samples.first(std::min(frames * channels, samples.size()));
        widen(peaks[stretch], piece);
        samples = samples.subspan(piece.size());
        const std::size_t used = piece.size() / channels;
        frame += static_cast<double>(used);
    }
}

std::size_t stretchesOf(double seconds, const OverviewDetail& detail) noexcept {
    constexpr double most = 200'000;
    const double wanted = std::min(seconds * static_cast<double>(detail.perSecond), most);
    return std::max(static_cast<std::size_t>(wanted), detail.least);
}

} // namespace

bool readWaveOverview(std::string_view path, const OverviewDetail& detail,
                      const std::stop_token& stop, std::vector<WavePeaks>& peaks) {
    peaks.clear();
    std::unique_ptr<WaveFile> file;
    if (WaveFile::open(path, file) != media_error::none)
        return false;
    const WaveLayout& layout = file->layout();
    const std::size_t count = stretchesOf(layout.length / layout.rate, detail);
    std::vector<WavePeaks> found(count);
    const auto channels = static_cast<std::size_t>(file->channels());
    const double framesPerStretch =
        std::max(layout.length, 1.0) / static_cast<double>(std::max<std::size_t>(count, 1));
    std::vector<float> samples(samplesPerRead);
    std::int64_t frame = 0;
    while (count > 0 && frame < file->frames()) {
        if (stop.stop_requested())
            return false;
        const std::size_t got = file->read(samples);
        if (got == 0)
            break;
        addFrames(std::span(samples).first(got * channels), channels, static_cast<double>(frame),
                  framesPerStretch, found);
        frame += static_cast<std::int64_t>(got);
    }
    if (file->failed())
        return false;
    peaks = std::move(found);
    return true;
}

} // namespace ov::sound
