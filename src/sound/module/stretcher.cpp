// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "sound/module/stretcher.h"

#include <SoundTouch.h>

namespace ov::sound::loaded {

namespace {

class Stretcher final : public SoundStretcher {
public:
    Stretcher(int rate, int channels, int tempo) {
        stretcher_.setSampleRate(static_cast<unsigned int>(rate));
        stretcher_.setChannels(static_cast<unsigned int>(channels));
        stretcher_.setTempo(tempo / 100.0);
    }
    void put(const float* samples, std::size_t frames) override {
        stretcher_.putSamples(samples, static_cast<unsigned int>(frames));
    }
    void flush() override { stretcher_.flush(); }
    std::size_t ready() const override { return stretcher_.numSamples(); }
    std::size_t take(float* samples, std::size_t frames) override {
        return stretcher_.receiveSamples(samples, static_cast<unsigned int>(frames));
    }

private:
    soundtouch::SoundTouch stretcher_;
};

} // namespace

std::unique_ptr<SoundStretcher> stretch(int rate, int channels, int tempo) {
    return std::make_unique<Stretcher>(rate, channels, tempo);
}

} // namespace ov::sound::loaded
