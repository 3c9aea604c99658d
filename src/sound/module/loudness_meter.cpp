// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "sound/module/loudness_meter.h"

#include <cmath>
#include <ebur128.h>
#include <new>

namespace ov::sound::loaded {

namespace {

constexpr double silence = -1000; // LUFS

class Meter final : public LoudnessMeter {
public:
    Meter(int rate, int channels)
        : state_(ebur128_init(static_cast<unsigned int>(channels), static_cast<unsigned long>(rate),
                              EBUR128_MODE_M)) {
        if (!state_)
            throw std::bad_alloc();
    }
    void put(const float* samples, std::size_t frames) override {
        ebur128_add_frames_float(state_.get(), samples, frames);
    }
    double momentary() const override {
        double loudness = silence;
        const bool known = ebur128_loudness_momentary(state_.get(), &loudness) == EBUR128_SUCCESS;
        return known && std::isfinite(loudness) ? loudness : silence;
    }

private:
    struct Closer {
        void operator()(ebur128_state* state) const noexcept { ebur128_destroy(&state); }
    };
    std::unique_ptr<ebur128_state, Closer> state_;
};

} // namespace

std::unique_ptr<LoudnessMeter> measureLoudness(int rate, int channels) {
    return std::make_unique<Meter>(rate, channels);
}

} // namespace ov::sound::loaded
