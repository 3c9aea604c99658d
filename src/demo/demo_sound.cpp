// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "demo/demo_sound.h"

#include "demo/dice.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <utility>

namespace ov::demo {

namespace {

// Longer than the longest piece, so that pieces start in different places.
constexpr int speechSeconds = DemoSound::longestSeconds + 10;
constexpr int harmonics = 20;
constexpr double fullScale = 0.7 * 32767;

// One syllable: a pitch with a bell-shaped loudness and two resonances of a mouth.
class Syllable {
public:
    Syllable(Dice& dice, double pitch, int rate)
        : pitch_(pitch),
          rate_(rate),
          first_(300.0 + dice.below(500)),
          second_(900.0 + dice.below(1500)) {
        double sum = 0;
        for (int i = 0; i < harmonics; ++i)
            sum += loudness_[static_cast<std::size_t>(i)] = loudnessOf((i + 1) * pitch);
        for (double& loudness : loudness_)
            loudness /= sum;
    }

    void append(std::vector<std::int16_t>& samples, int length) {
        for (int i = 0; i < length; ++i) {
            const double envelope = std::sin(std::numbers::pi * i / length);
            samples.push_back(static_cast<std::int16_t>(
                fullScale * envelope * envelope * wave(2 * std::numbers::pi * pitch_ * i / rate_)));
        }
    }

private:
    double loudnessOf(double frequency) const {
        if (frequency > 0.45 * rate_)
            return 0;
        const double a = (frequency - first_) / 120;
        const double b = (frequency - second_) / 200;
        return 1 / (1 + a * a) + 0.5 / (1 + b * b) + 0.02;
    }

    // sin(n x) of all harmonics by recurrence, from one sine and one cosine.
    double wave(double x) const {
        const double factor = 2 * std::cos(x);
        double before = 0;
        double current = std::sin(x);
        double sum = 0;
        for (const double loudness : loudness_) {
            sum += loudness * current;
            before = std::exchange(current, factor * current - before);
        }
        return sum;
    }

    double pitch_;
    int rate_;
    double first_;
    double second_;
    std::array<double, harmonics> loudness_{};
};

// Phrases of a few falling syllables with pauses between them.
std::vector<std::int16_t> makeSpeech(Dice dice, int rate) {
    const auto total = static_cast<std::size_t>(rate) * speechSeconds;
    const auto samplesIn = [&](std::uint32_t milliseconds) {
        return static_cast<int>(milliseconds) * rate / 1000;
    };
    std::vector<std::int16_t> samples;
    samples.reserve(total + static_cast<std::size_t>(rate));
    while (samples.size() < total) {
        double pitch = 120.0 + dice.below(50);
        for (std::uint32_t left = 5 + dice.below(10); left > 0; --left) {
            Syllable(dice, pitch, rate).append(samples, samplesIn(120 + dice.below(160)));
            pitch *= 0.97;
        }
        samples.insert(samples.end(), static_cast<std::size_t>(samplesIn(200 + dice.below(700))),
                       0);
    }
    samples.resize(total);
    return samples;
}

} // namespace

const std::vector<std::int16_t>& DemoSound::speech(int rate) {
    auto& samples = speechByRate_[rate];
    if (samples.empty())
        samples = makeSpeech(Dice(seed_), rate);
    return samples;
}

platform::Status DemoSound::render(const sound::SoundFormat& format, int seconds,
                                   std::uint32_t piece, std::string& file) {
    const std::vector<std::int16_t>& source = speech(format.rate);
    const auto frames = static_cast<std::size_t>(format.rate) * static_cast<std::size_t>(seconds);
    const std::int16_t* start = source.data() + piece % (source.size() - frames);
    std::vector<std::int16_t> samples(start, start + frames);
    if (format.channels == 2) {
        samples.resize(2 * frames);
        for (std::size_t i = 0; i < frames; ++i) { // the voice sits left of the middle
            samples[2 * i] = start[i];
            samples[2 * i + 1] = static_cast<std::int16_t>(start[i] / 2);
        }
    }

    platform::Status status;
    const sound::SoundLibraries* libraries = sound::soundLibraries(status);
    return libraries != nullptr ? libraries->encode(format, samples, file) : status;
}

} // namespace ov::demo
