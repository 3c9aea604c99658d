// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "playback/play_speeds.h"
#include "sound/effects/sound_shape.h"

#include <cstdint>
#include <string>

namespace ov {

// How the user wants the player to play. Kept from one use to the next.
struct PlayerChoices {
    static constexpr std::int32_t usualSpeed = usualPlaySpeed;
    static constexpr std::int32_t slowest = playSpeeds.front();
    static constexpr std::int32_t fastest = playSpeeds.back();
    static constexpr std::int32_t mostBackUpSeconds = 10;

    std::int32_t speedPercent = usualSpeed; // pitch unchanged
    // That the player goes back before it goes on after a pause or from where it was moved to.
    std::int32_t backUpSeconds = 0;
    std::string timeStampForm;       // see player_texts.h; one that names no time is the usual one
    bool remembersPositions = false; // where dictations are left
    sound::SoundShape shape;

    bool operator==(const PlayerChoices&) const = default;
};

} // namespace ov
