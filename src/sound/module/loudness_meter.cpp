// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "sound/module/loudness_meter.h"

#include <algorithm>
#include <cmath>
#include <ebur128.h>
#include <new>

namespace ov::sound::loaded {

namespace {

constexpr double silence = -1000; // LUFS

class State {
public:
    State(int rate, int channels, int mode)
        : state_(ebur128_init(static_cast<unsigned int>(channels), static_cast<unsigned long>(rate),
                              mode)) {
        if (!state_)
            throw std::bad_alloc();
    }
    ebur128_state* get() const noexcept { return state_.get(); }

private:
    struct Closer {
        void operator()(ebur128_state* state) const noexcept { ebur128_destroy(&state); }
    };
    std::unique_ptr<ebur128_state, Closer> state_;
};

class Meter final : public LoudnessMeter {
public:
    Meter(int rate, int channels) : state_(rate, channels, EBUR128_MODE_M) {}
    void put(const float* samples, std::size_t frames) override {
        ebur128_add_frames_float(state_.get(), samples, frames);
    }
    double momentary() const override {
        double loudness = silence;
        const bool known = ebur128_loudness_momentary(state_.get(), &loudness) == EBUR128_SUCCESS;
        return known && std::isfinite(loudness) ? loudness : silence;
    }

private:
    State state_;
};

class Peaks final : public PeakMeter {
public:
    Peaks(int rate, int channels) : state_(rate, channels, EBUR128_MODE_TRUE_PEAK) {}
    float peak(const float* samples, std::size_t frames) override {
        ebur128_add_frames_float(state_.get(), samples, frames);
        double largest = 0;
        for (unsigned int i = 0; i < state_.get()->channels; ++i) {
            double peak = 0;
            if (ebur128_prev_true_peak(state_.get(), i, &peak) == EBUR128_SUCCESS)
                largest = std::max(largest, peak);
        }
        return static_cast<float>(largest);
    }

private:
    State state_;
};

} // namespace

std::unique_ptr<LoudnessMeter> measureLoudness(int rate, int channels) {
    return std::make_unique<Meter>(rate, channels);
}

std::unique_ptr<PeakMeter> measurePeaks(int rate, int channels) {
    return std::make_unique<Peaks>(rate, channels);
}

} // namespace ov::sound::loaded
