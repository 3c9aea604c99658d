// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "cli/play/play_span.h"

#include "playback/milliseconds.h"

#include <algorithm>

namespace ov::cli {

namespace {

std::int64_t placeOf(const TypedTime& time, std::int64_t on, std::int64_t length) {
    const std::int64_t milliseconds = time.seconds * msOfSecond;
    const std::int64_t start = !time.isRelative ? 0 : milliseconds < 0 ? length : on;
    return std::clamp<std::int64_t>(start + milliseconds, 0, length);
}

} // namespace

std::string notATime(const std::string& text) {
    return '"' + text + "\" is no time; say 83, 1:23, +30 or -30";
}

std::optional<PlaySpan> spanOf(const WantedSpan& wanted, std::int32_t length) {
    const std::int64_t from = wanted.from ? placeOf(*wanted.from, 0, length) : 0;
    const std::int64_t to = wanted.to ? placeOf(*wanted.to, from, length) : length;
    const bool asks = wanted.from || wanted.to; // an empty file is played too
    if (asks && from >= to)
        return std::nullopt;
    return PlaySpan{static_cast<std::int32_t>(from), static_cast<std::int32_t>(to)};
}

} // namespace ov::cli
