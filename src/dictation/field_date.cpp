// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "dictation/field_date.h"

#include <array>
#include <charconv>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <limits>

#include "platform/text.h"
#include "support/numbers.h"

namespace ov::modDictation {

namespace {

using std::chrono::days;
using std::chrono::sys_days;

constexpr sys_days origin{std::chrono::year{1899} / 12 / 30};
constexpr std::int32_t secondsPerDay = 86400;
constexpr std::size_t shortestDate = 8;

constexpr std::int32_t serialDay(int year, int month, int day) noexcept {
    const sys_days date{std::chrono::year{year} / month / day};
    return static_cast<std::int32_t>((date - origin).count());
}

constexpr std::int32_t firstDay = serialDay(100, 1, 1);
constexpr std::int32_t lastDay = serialDay(9999, 12, 31);

struct Pieces {
    std::array<std::string_view, 3> text;
    std::size_t count = 0; // 4 stands for more than three
};

Pieces split(std::string_view text, char separator, char other) noexcept {
    Pieces pieces;
    std::size_t start = 0;
    for (std::size_t i = 0; i <= text.size() && pieces.count < 4; ++i) {
        if (i < text.size() && text[i] != separator && text[i] != other)
            continue;
        if (pieces.count < 3)
            pieces.text[pieces.count] = text.substr(start, i - start);
        ++pieces.count;
        start = i + 1;
    }
    return pieces;
}

// The whole number that a piece begins with; one that is too large stays out of any range.
std::int32_t leadingDigits(std::string_view text) noexcept {
    std::int32_t value = 0;
    const std::string_view digits = platform::trimmed(text, ' ');
    const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    if (result.ec == std::errc::result_out_of_range)
        return std::numeric_limits<std::int32_t>::max();
    return value;
}

// Months beyond 1 to 12 and days beyond the month roll over. Parts that are out of all reason
// (a date's pieces are 16-bit numbers) are no date.
std::optional<std::int32_t> rolledDay(std::int32_t year, std::int32_t month,
                                      std::int32_t day) noexcept {
    constexpr std::int32_t limit = 32767;
    if (std::abs(year) > limit || std::abs(month) > limit || std::abs(day) > limit)
        return std::nullopt;
    if (year >= 0 && year < 100)
        year += year < 30 ? 2000 : 1900;
    const auto first = std::chrono::year_month{std::chrono::year{year}, std::chrono::January} +
                       std::chrono::months{month - 1};
    const auto date = sys_days{first / 1} + days{day - 1};
    const auto serial = (date - origin).count();
    if (serial < firstDay || serial > lastDay)
        return std::nullopt;
    return static_cast<std::int32_t>(serial);
}

// Adds a written time, rolling over into other days.
std::optional<DateSerial> withTime(std::int32_t day, std::string_view time) noexcept {
    DateSerial result{day, 0, false};
    const Pieces pieces = split(time, '$', '$');
    if (pieces.count != 3)
        return result;
    std::int64_t seconds = 0;
    for (const std::string_view piece : pieces.text)
        seconds = seconds * 60 + leadingDigits(piece);
    const std::int64_t rolled = seconds >= 0 ? seconds / secondsPerDay
                                             : (seconds - secondsPerDay + 1) / secondsPerDay;
    const std::int64_t newDay = day + rolled;
    if (newDay < firstDay || newDay > lastDay)
        return std::nullopt;
    result.day = static_cast<std::int32_t>(newDay);
    result.second = static_cast<std::int32_t>(seconds - rolled * secondsPerDay);
    result.hasTime = true;
    return result;
}

std::optional<DateSerial> fromNumber(double value) noexcept {
    const double wholeDay = std::floor(value);
    if (!(wholeDay >= firstDay && wholeDay <= lastDay))
        return std::nullopt;
    DateSerial result{static_cast<std::int32_t>(wholeDay), 0, value != wholeDay};
    result.second = static_cast<std::int32_t>(std::lround((value - wholeDay) * secondsPerDay));
    if (result.second == secondsPerDay) {
        result.second = 0;
        ++result.day;
    }
    return result;
}

// A whole text that is a plain decimal number.
std::optional<double> wholeNumber(std::string_view text) noexcept {
    double value = 0;
    const char* end = text.data() + text.size();
    const auto [stop, error] =
        std::from_chars(text.data(), end, value);
    if (text.empty() || error != std::errc{} || stop != end || !std::isfinite(value))
        return std::nullopt;
    return value;
}

} // namespace

std::optional<DateSerial> ReadFieldDate(std::string_view text, bool dateOnly) noexcept {
    if (text.size() < shortestDate)
        return std::nullopt;
    const std::size_t blank = text.find(' ');
    const Pieces date = split(text.substr(0, blank), '.', '-');
    if (date.count != 3)
        return std::nullopt;
    const auto day = rolledDay(leadingDigits(date.text[2]), leadingDigits(date.text[1]),
                               leadingDigits(date.text[0]));
    if (!day)
        return std::nullopt;
    if (dateOnly || blank == std::string_view::npos)
        return DateSerial{*day, 0, false};
    const std::string_view rest = text.substr(blank + 1);
    return withTime(*day, rest.substr(0, rest.find(' ')));
}

std::optional<DateSerial> readDateOrSerial(std::string_view text) noexcept {
    const std::string_view bare = platform::trimmed(text, ' ');
    if (const auto number = wholeNumber(bare))
        return fromNumber(*number);
    return ReadFieldDate(bare, false);
}

void appendSerialText(const DateSerial& serial, std::string& out) {
    constexpr int digits = 15;
    const double value = serial.day + static_cast<double>(serial.second) / secondsPerDay;
    std::array<char, 40> text{};
    const auto [end, error] = std::to_chars(text.data(), text.data() + text.size(), value,
                                            std::chars_format::general, digits);
    out.append(text.data(), end);
}

std::string serialText(const DateSerial& serial) {
    std::string text;
    appendSerialText(serial, text);
    return text;
}

std::int32_t dayNumber(const platform::DateTime& date) noexcept {
    return serialDay(date.year, date.month, date.day);
}

platform::DateTime dateOf(const DateSerial& serial) noexcept {
    const std::chrono::year_month_day date{origin + days{serial.day}};
    return {static_cast<int>(date.year()),
            static_cast<int>(static_cast<unsigned>(date.month())),
            static_cast<int>(static_cast<unsigned>(date.day())),
            serial.second / 3600,
            serial.second / 60 % 60,
            serial.second % 60};
}

int weekdayOf(std::int32_t day) noexcept {
    return static_cast<int>(std::chrono::weekday{origin + days{day}}.c_encoding());
}

std::optional<std::int32_t> readSeconds(std::string_view text) noexcept {
    constexpr std::int32_t mostHours = 9999;
    const Pieces pieces = split(platform::trimmed(text, ' '), ':', '$');
    if (pieces.count != 2 && pieces.count != 3)
        return std::nullopt;
    std::array<std::int32_t, 3> parts{};
    for (std::size_t i = 0; i < pieces.count; ++i) {
        if (!isAllDigits(pieces.text[i]) || pieces.text[i].size() > 4)
            return std::nullopt;
        parts[i] = leadingDigits(pieces.text[i]);
    }
    if (parts[0] > mostHours || parts[1] > 59 || parts[2] > 59)
        return std::nullopt;
    return (parts[0] * 60 + parts[1]) * 60 + parts[2];
}

std::string secondsText(std::int32_t seconds) {
    std::array<char, 32> text{};
    const int length = std::snprintf(text.data(), text.size(), "%02d:%02d:%02d", seconds / 3600,
                                     seconds / 60 % 60, seconds % 60);
    return {text.data(), static_cast<std::size_t>(length)};
}

} // namespace ov::modDictation
