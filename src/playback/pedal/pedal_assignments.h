// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/input/input_devices.h"
#include "playback/pedal/pedal_action.h"

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>

namespace ov {

// "05f3:00ff", as it is told to users.
std::string kindText(platform::InputKind kind);

// Which pedal does what, by kinds of devices, so that it is the same for all of a kind and kept
// while none is there. Made of this text, which is stored:
//
//   text   := [jump] { ";" kind }          "5;05f3:00ff! 256=1 257=3;1234:abcd 30=2"
//   jump   := seconds that a jump leads
//   kind   := vendor ":" product ["!"] { " " control "=" action }
//
// Vendor and product are hexadecimal, all others decimal numbers; "!" keeps what is pressed from
// everybody else. What makes no sense is left out.
class PedalAssignments {
public:
    struct Place {
        platform::InputKind kind;
        std::uint32_t control = 0;
        auto operator<=>(const Place&) const = default;
    };

    PedalAssignments() = default;
    explicit PedalAssignments(std::string_view text);
    std::string text() const;
    bool operator==(const PedalAssignments&) const = default;

    const std::map<Place, PedalAction>& places() const noexcept { return places_; }
    std::optional<PedalAction> actionOf(const Place& place) const;
    // It did something else before, or nothing.
    void assign(const Place& place, PedalAction action) { places_[place] = action; }
    void remove(const Place& place) { places_.erase(place); }

    // Whether what is pressed on those devices is for the player alone.
    bool isGrabbed(platform::InputKind kind) const;
    void setGrabbed(platform::InputKind kind, bool grabbed);

    static constexpr std::int32_t usualJump = 5;
    static constexpr std::int32_t longestJump = 60;
    std::int32_t jumpSeconds() const noexcept { return jumpSeconds_; } // 1 to longestJump
    void setJumpSeconds(std::int32_t seconds);

    // What has to be read for that.
    platform::InputWish wish() const;

private:
    void readKind(std::string_view text);

    std::map<Place, PedalAction> places_;
    std::set<platform::InputKind> grabbed_;
    std::int32_t jumpSeconds_ = usualJump;
};

} // namespace ov
