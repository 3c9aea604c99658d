// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// The player as other programs see and drive it.

#include "playback/milliseconds.h"
#include "playback/modMultimedia.h"
#include "playback/panel/bus/player_status.h"
#include "playback/panel/player_panel.h"
#include "sound/wave_control.h"

#include <algorithm>
#include <cmath>

namespace ov {

using namespace modMultimedia;
using std::chrono::milliseconds;

PlayerStatus PlayerPanel::status() const {
    PlayerStatus status;
    status.speedPercent = choices_.speedPercent;
    if (const int loudest = slSearchPlayerVolume_->maximum(); slSearchPlayerVolume_->isEnabled())
        status.volume = 1.0 - static_cast<double>(slSearchPlayerVolume_->value()) / loudest;
    if (alias_.empty()) {
        status.canPlay = opening_ || (selectedPath_ && !selectedPath_().empty());
        return status;
    }
    status.mode = isPlaying() ? PlayerStatus::Mode::playing : PlayerStatus::Mode::paused;
    status.canPlay = true;
    status.path = file_;
    if (rate_ > 0) {
        const std::int64_t position = std::clamp(MciGetPosition(alias_), 0, std::max(length_, 0));
        status.position = milliseconds(position * msOfSecond / rate_);
        status.length = milliseconds(length_ * msOfSecond / rate_);
    }
    return status;
}

void PlayerPanel::goTo(milliseconds place) {
    if (alias_.empty() || rate_ <= 0)
        return;
    const std::int64_t within = std::clamp<std::int64_t>(place.count(), 0, lengthMs_);
    goToUnits(within * rate_ / msOfSecond);
}

void PlayerPanel::changeSpeed(std::int32_t percent) {
    choices_.shape = sound::WaveControl::instance().shape(); // another window may have chosen
    PlayerChoices choices = choices_;
    choices.speedPercent = percent;
    choose(choices);
}

void PlayerPanel::changeVolume(double share) {
    const int loudest = slSearchPlayerVolume_->maximum();
    if (slSearchPlayerVolume_->isEnabled())
        slSearchPlayerVolume_->setValue(loudest - static_cast<int>(std::lround(share * loudest)));
}

} // namespace ov
