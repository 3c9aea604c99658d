// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "playback/pedal/pedal_assignments.h"
#include "playback/pedal/pedalled_player.h"

#include <chrono>
#include <cstdint>
#include <optional>
#include <vector>

namespace ov {

// What pedals do to a player as they go down and come up. For one thread; "now" comes from the
// caller.
class PedalFeet {
public:
    using Time = std::chrono::steady_clock::time_point;
    // Between the places that are heard while it winds: as long as each of them.
    static constexpr std::chrono::milliseconds windInterval{200};

    // The player that obeys from now on, nullptr for none. What is held does nothing to it, and no
    // more to the one before.
    void obey(PedalledPlayer* player, Time now);
    const PedalledPlayer* player() const noexcept { return player_; }
    // The one that goes away is not called any more.
    void forget(const PedalledPlayer& player);

    // What is held stays so only if it does the same.
    void setAssignments(PedalAssignments assignments, Time now);
    const PedalAssignments& assignments() const noexcept { return assignments_; }

    void press(const platform::InputPress& press, Time now);
    // All pedals come up.
    void liftAll(Time now);

    // While it winds, each windInterval.
    bool isWinding() const noexcept;
    void wind(Time now);

    // How many times as fast as it is recorded it winds after that time.
    static int windSpeed(std::chrono::milliseconds held) noexcept;

private:
    enum class Motion : std::uint8_t { rest, play, back, forward };
    struct Held {
        std::uint32_t device;
        std::uint32_t control;
        PedalAction action;
    };

    struct Winding {
        Time since{};
        std::chrono::milliseconds place{};
        std::chrono::milliseconds length{}; // of what is wound through
        bool goesOn = false;                // it played before, and not because of a pedal
    };

    void lift(const platform::InputPress& press);
    Motion wanted() const noexcept;
    void settle(Time now);
    void beginWinding(Motion before, Time now);
    bool isStillOpen(const Winding& winding) const;
    void endWinding();

    PedalAssignments assignments_;
    PedalledPlayer* player_ = nullptr;
    std::vector<Held> held_; // the last one last
    Motion motion_ = Motion::rest;
    std::optional<Winding> winding_; // nothing also while there is nothing to wind
};

} // namespace ov
