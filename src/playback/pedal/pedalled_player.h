// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "playback/pedal/pedal_action.h"

#include <chrono>
#include <cstdint>
#include <optional>

namespace ov {

// A player as feet use it. Nothing here waits, or lets messages be handled.
class PedalledPlayer {
public:
    struct Place {
        std::chrono::milliseconds at{};
        std::chrono::milliseconds length{};
    };

    virtual bool isPedalPlaying() const = 0;
    // Goes on with what is open, or begins the selected dictation.
    virtual void pedalPlay() = 0;
    // Pauses, and goes back by as much as the player backs up.
    virtual void pedalRest() = 0;

    // Nothing while nothing is open.
    virtual std::optional<Place> pedalPlace() const = 0;
    // Plays from there; stays silent there.
    virtual void pedalPlayFrom(std::chrono::milliseconds place) = 0;
    virtual void pedalRestAt(std::chrono::milliseconds place) = 0;

    // One of the actions that are done as soon as a pedal goes down.
    virtual void pedalDo(PedalAction action, std::int32_t jumpSeconds) = 0;

protected:
    ~PedalledPlayer() = default;
};

} // namespace ov
