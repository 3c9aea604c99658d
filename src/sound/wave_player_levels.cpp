// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// How loud what is decoded is, and how loud it shall be. On the player's own thread.

#include "sound/wave_control.h"
#include "sound/wave_player.h"

#include <cmath>
#include <vector>

namespace ov::sound {

bool WavePlayer::evensOut() const noexcept {
    return WaveControl::instance().shape().evensOut && layout_.rate >= LoudnessLeveler::slowestRate;
}

// A dictation shall begin as loud as it goes on.
void WavePlayer::expectLoudness(const Request& request) {
    if (!evensOut())
        return;
    if (!leveler_)
        leveler_.emplace(layout_.rate, channels_);
    if (!leveler_->isNew() || !file_->seek(std::llround(request.from)))
        return;
    std::vector<float> samples(static_cast<std::size_t>(layout_.rate * channels_));
    constexpr int secondsAhead = 10;
    for (int second = 0; second < secondsAhead && !interrupt_; ++second)
        leveler_->expect(
            std::span(samples).first(file_->read(samples) * static_cast<std::size_t>(channels_)));
}

void WavePlayer::measure(WaveBlock& block) {
    const auto samples =
        std::span(block.samples).first(block.piece.frames * static_cast<std::size_t>(channels_));
    const SoundShape shape = WaveControl::instance().shape();
    if (shape.cutsRumble)
        highPass_.run(samples);
    block.peaks = {largestMagnitude(samples), 0};
    if (evensOut() || shape.boost > SoundShape::usualBoost) {
        if (!peakMeter_)
            peakMeter_ = soundLibraries().measurePeaks(layout_.rate, channels_);
        block.peaks.between = peakMeter_->peak(samples.data(), block.piece.frames);
    }
    if (!evensOut())
        leveler_.reset();
    else if (!leveler_)
        leveler_.emplace(layout_.rate, channels_);
    block.gain = leveler_ ? leveler_->follow(samples) : 1;
}

} // namespace ov::sound
