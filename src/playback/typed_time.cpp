// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "playback/typed_time.h"

#include "platform/text.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace ov {

namespace {

constexpr std::int32_t minute = 60;

// Hours have up to four digits, minutes five, seconds six: more is no time of a dictation.
constexpr std::array<std::size_t, 3> mostDigits{6, 5, 4};

std::optional<std::int32_t> numberOf(std::string_view digits, std::size_t most) {
    const bool isNumber = !digits.empty() && digits.size() <= most &&
                          std::ranges::all_of(digits, [](char c) { return c >= '0' && c <= '9'; });
    std::int32_t number = 0;
    std::from_chars(digits.data(), digits.data() + digits.size(), number);
    return isNumber ? std::optional(number) : std::nullopt;
}

// "1:02:03"; each number but the first stays below a minute.
std::optional<std::int32_t> secondsOf(std::string_view text) {
    std::int32_t all = 0;
    std::int32_t unit = 1;
    for (const std::size_t most : mostDigits) {
        const std::size_t colon = text.rfind(':');
        const bool isFirst = colon == std::string_view::npos;
        const auto number = numberOf(isFirst ? text : text.substr(colon + 1), most);
        if (!number || (!isFirst && *number >= minute))
            return std::nullopt;
        all += *number * unit;
        unit *= minute;
        if (isFirst)
            return all;
        text = text.substr(0, colon);
    }
    return std::nullopt;
}

} // namespace

std::optional<TypedTime> readTypedTime(std::string_view text) {
    text = platform::trimmed(text);
    const bool isBack = text.starts_with('-');
    const bool isRelative = isBack || text.starts_with('+');
    const auto seconds = secondsOf(platform::trimmed(text.substr(isRelative ? 1 : 0)));
    if (!seconds)
        return std::nullopt;
    return TypedTime{isBack ? -*seconds : *seconds, isRelative};
}

} // namespace ov
