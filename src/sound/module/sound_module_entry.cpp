// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// What is loaded when the first sound is wanted.

#include "platform/loaded_module.h"
#include "sound/module/loudness_meter.h"
#include "sound/module/sdl_output.h"
#include "sound/module/sndfile_codec.h"
#include "sound/module/stretcher.h"

namespace ov::sound::loaded {

namespace {

class Libraries final : public SoundLibraries {
public:
    std::unique_ptr<SoundDecoder> decode(SoundBytes& bytes, SoundInfo& info) const override {
        return loaded::decode(bytes, info);
    }
    platform::Status encode(const SoundFormat& format, std::span<const std::int16_t> samples,
                            std::string& file) const override {
        return loaded::encode(format, samples, file);
    }
    std::unique_ptr<SoundStretcher> stretch(int rate, int channels, int tempo) const override {
        return loaded::stretch(rate, channels, tempo);
    }
    std::unique_ptr<LoudnessMeter> measureLoudness(int rate, int channels) const override {
        return loaded::measureLoudness(rate, channels);
    }
    std::unique_ptr<PeakMeter> measurePeaks(int rate, int channels) const override {
        return loaded::measurePeaks(rate, channels);
    }
    std::vector<std::string> outputNames() const override { return loaded::outputNames(); }
    std::unique_ptr<WaveOutput> openOutput(int rate, int channels, const OutputWish& which,
                                           WaveSource& source) const override {
        return loaded::openOutput(rate, channels, which, source);
    }
    void leaveThread() const noexcept override { loaded::leaveThread(); }
};

} // namespace

} // namespace ov::sound::loaded

const void* ovsearchModule(const char* version) {
    static const auto& libraries = *new ov::sound::loaded::Libraries; // outlives every player
    return ov::platform::isModuleVersion(version) ? &libraries : nullptr;
}
