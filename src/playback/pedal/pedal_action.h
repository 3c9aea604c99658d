// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <span>

// What a pedal can do.

namespace ov {

// Stored; add at the end only.
enum class PedalAction : std::uint8_t {
    playWhileHeld = 1,
    playOrPause,
    windBack, // while it is held
    windForward,
    jumpBack,
    jumpForward,
    playAgain, // the last seconds
    toStart,
    stop,
    timeStamp,
};

struct PedalActionText {
    PedalAction action;
    std::int32_t text;
};
// All, in the order in which they are shown.
std::span<const PedalActionText> pedalActions() noexcept;

// Nothing for a number that no action has.
std::optional<PedalAction> pedalActionOf(std::int32_t number) noexcept;

} // namespace ov
