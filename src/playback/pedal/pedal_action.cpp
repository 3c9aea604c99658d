// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "playback/pedal/pedal_action.h"

#include "support/language/pedal_text_ids.h"

#include <array>

namespace ov {

namespace {

using enum PedalAction;

constexpr std::array actions{
    PedalActionText{playWhileHeld, text_id::pedalPlayWhileHeld},
    PedalActionText{windBack, text_id::pedalWindBack},
    PedalActionText{windForward, text_id::pedalWindForward},
    PedalActionText{playOrPause, text_id::pedalPlayOrPause},
    PedalActionText{jumpBack, text_id::pedalJumpBack},
    PedalActionText{jumpForward, text_id::pedalJumpForward},
    PedalActionText{playAgain, text_id::pedalPlayAgain},
    PedalActionText{toStart, text_id::pedalToStart},
    PedalActionText{stop, text_id::pedalStop},
    PedalActionText{timeStamp, text_id::pedalTimeStamp},
};

} // namespace

std::span<const PedalActionText> pedalActions() noexcept {
    return actions;
}

std::optional<PedalAction> pedalActionOf(std::int32_t number) noexcept {
    for (const PedalActionText& known : actions)
        if (static_cast<std::int32_t>(known.action) == number)
            return known.action;
    return std::nullopt;
}

} // namespace ov
