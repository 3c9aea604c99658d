// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "playback/typed_time.h"

#include <cstdint>
#include <optional>
#include <string>

namespace ov::cli {

// What is to be played of each file. "-30" counts from its end; an end of "+30" lies thirty seconds
// behind the beginning.
struct WantedSpan {
    std::optional<TypedTime> from;
    std::optional<TypedTime> to;
};

// In milliseconds.
struct PlaySpan {
    std::int32_t from = 0;
    std::int32_t to = 0;
    bool operator==(const PlaySpan&) const = default;
};

// What to say of a text that is no time.
std::string notATime(const std::string& text);

// Within a file of that length; nothing when it has nothing there.
std::optional<PlaySpan> spanOf(const WantedSpan& wanted, std::int32_t length);

} // namespace ov::cli
