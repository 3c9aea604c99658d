// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "dictation/field_date.h"

#include "platform/text.h"
#include "support/numbers.h"

#include <array>
#include <charconv>
#include <chrono>
#include <cmath>
#include <cstdio>

namespace ov::modDictation {

namespace {

using std::chrono::days;
using std::chrono::sys_days;

constexpr sys_days origin{std::chrono::year{1899} / 12 / 30};
constexpr std::size_t shortestDate = 8;

constexpr std::int32_t serialDay(int year, int month, int day) noexcept {
    const sys_days date{std::chrono::year{year} / month / day};
    return static_cast<std::int32_t>((date - origin).count());
}

constexpr std::int32_t firstDay = serialDay(100, 1, 1);
constexpr std::int32_t lastDay = serialDay(9999, 12, 31);

using Numbers = std::array<std::int32_t, 3>;

struct Pieces {
    std::array<std::string_view, 3> text;
    std::size_t count = 0; // 4 stands for more than three
};

// Counted in characters, not bytes.
bool isLongEnough(std::string_view utf8) noexcept {
    std::size_t characters = 0;
    for (const char c : utf8) {
        const bool begins = (static_cast<unsigned char>(c) & 0xC0U) != 0x80U;
        if (begins && ++characters == shortestDate)
            return true;
    }
    return false;
}

Pieces split(std::string_view text, char one, char other) noexcept {
    Pieces pieces;
    std::size_t start = 0;
    for (std::size_t i = 0; i <= text.size() && pieces.count < 4; ++i) {
        if (i < text.size() && text[i] != one && text[i] != other)
            continue;
        if (pieces.count < 3)
            pieces.text[pieces.count] = text.substr(start, i - start);
        ++pieces.count;
        start = i + 1;
    }
    return pieces;
}

// The whole numbers that three pieces begin with, 0 for one without digits. Dates and times are
// made of 16-bit numbers: with a larger one there is none.
std::optional<Numbers> leadingNumbers(const Pieces& pieces) noexcept {
    constexpr std::uint32_t largest = 32767;
    Numbers numbers{};
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        const std::string_view text = pieces.text[i];
        std::uint32_t value = 0; // unsigned: a sign is no digit
        const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
        if (result.ec == std::errc::result_out_of_range || value > largest)
            return std::nullopt;
        numbers[i] = static_cast<std::int32_t>(value);
    }
    return numbers;
}

std::optional<DateSerial> serialAt(std::chrono::seconds sinceOrigin, bool hasTime) noexcept {
    const auto day = std::chrono::floor<days>(sinceOrigin);
    if (day.count() < firstDay || day.count() > lastDay)
        return std::nullopt;
    return DateSerial{static_cast<std::int32_t>(day.count()),
                      static_cast<std::int32_t>((sinceOrigin - day).count()), hasTime};
}

// Months beyond 1 to 12 and days beyond the month roll over.
std::optional<days> rolledDay(std::string_view date) noexcept {
    const Pieces pieces = split(date, '.', '-');
    const auto numbers = pieces.count == 3 ? leadingNumbers(pieces) : std::nullopt;
    if (!numbers)
        return std::nullopt;
    auto [day, month, year] = *numbers;
    if (year < 100)
        year += year < 30 ? 2000 : 1900;
    const auto first = std::chrono::year_month{std::chrono::year{year}, std::chrono::January} +
                       std::chrono::months{month - 1};
    return sys_days{first / 1} + days{day - 1} - origin;
}

// The day with the written time, which may roll over into the next ones.
std::optional<DateSerial> withTime(days day, std::string_view time) noexcept {
    const Pieces pieces = split(time, '$', '$');
    if (pieces.count != 3)
        return serialAt(day, false);
    const auto numbers = leadingNumbers(pieces);
    if (!numbers)
        return std::nullopt;
    const auto [hour, minute, second] = *numbers;
    return serialAt(day + std::chrono::hours{hour} + std::chrono::minutes{minute} +
                        std::chrono::seconds{second},
                    true);
}

std::optional<DateSerial> fromNumber(double value) noexcept {
    if (!(value >= firstDay && value < lastDay + 1))
        return std::nullopt;
    const std::chrono::seconds sinceOrigin{std::llround(value * secondsPerDay)};
    return serialAt(sinceOrigin, value != std::floor(value));
}

// A whole text that is a plain decimal number.
std::optional<double> wholeNumber(std::string_view text) noexcept {
    double value = 0;
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    if (text.empty() || error != std::errc{} || stop != end || !std::isfinite(value))
        return std::nullopt;
    return value;
}

} // namespace

std::optional<DateSerial> ReadFieldDate(std::string_view text, bool dateOnly) noexcept {
    if (!isLongEnough(text))
        return std::nullopt;
    const std::size_t blank = text.find(' ');
    const auto day = rolledDay(text.substr(0, blank));
    if (!day)
        return std::nullopt;
    if (dateOnly || blank == std::string_view::npos)
        return serialAt(*day, false);
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
    const double value = daysOf(serial);
    std::array<char, 40> text{};
    const auto [end, error] = std::to_chars(text.data(), text.data() + text.size(), value,
                                            std::chars_format::general, digits);
    out.append(text.data(), end);
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
    const Pieces pieces = split(platform::trimmed(text, ' '), ':', '$');
    if (pieces.count != 2 && pieces.count != 3)
        return std::nullopt;
    for (std::size_t i = 0; i < pieces.count; ++i)
        if (!isAllDigits(pieces.text[i]))
            return std::nullopt;
    const auto numbers = leadingNumbers(pieces);
    if (!numbers)
        return std::nullopt;
    const auto [hours, minutes, seconds] = *numbers;
    if (minutes > 59 || seconds > 59)
        return std::nullopt;
    return (hours * 60 + minutes) * 60 + seconds;
}

std::string secondsText(std::int32_t seconds) {
    std::array<char, 32> text{};
    const int length = std::snprintf(text.data(), text.size(), "%02d:%02d:%02d", seconds / 3600,
                                     seconds / 60 % 60, seconds % 60);
    return {text.data(), static_cast<std::size_t>(length)};
}

} // namespace ov::modDictation
