// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "support/numbers.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

namespace ov {

namespace {

bool isDigit(char c) noexcept {
    return c >= '0' && c <= '9';
}

std::size_t skipDigits(std::string_view text, std::size_t at) noexcept {
    while (at < text.size() && isDigit(text[at]))
        ++at;
    return at;
}

// The end of the number's digits and decimal point; `start` when there is no digit.
std::size_t mantissaEnd(std::string_view text, std::size_t start) noexcept {
    const std::size_t whole = skipDigits(text, start);
    std::size_t end = whole;
    if (end < text.size() && text[end] == '.')
        end = skipDigits(text, end + 1);
    const bool anyDigit = whole > start || end > whole + 1;
    return anyDigit ? end : start;
}

// Past the exponent when one with digits follows.
std::size_t exponentEnd(std::string_view text, std::size_t at) noexcept {
    if (at >= text.size() || (text[at] != 'e' && text[at] != 'E'))
        return at;
    std::size_t digits = at + 1;
    if (digits < text.size() && (text[digits] == '+' || text[digits] == '-'))
        ++digits;
    const std::size_t end = skipDigits(text, digits);
    return end > digits ? end : at;
}

// The exponent behind the "e"; saturated far below what an addition could overflow.
std::int64_t exponentValue(std::string_view digits) noexcept {
    constexpr std::int64_t enough = std::int64_t{1} << 40;
    const bool negative = digits.starts_with('-');
    if (negative || digits.starts_with('+'))
        digits.remove_prefix(1);
    std::int64_t value = enough;
    std::from_chars(digits.data(), digits.data() + digits.size(), value);
    return negative ? -std::min(value, enough) : std::min(value, enough);
}

// from_chars reports both an overflow and an underflow as out of range: the place of the first
// digit that counts tells which.
double outOfRange(std::string_view number) noexcept {
    const std::size_t e = std::min(number.find_first_of("eE"), number.size());
    const std::string_view mantissa = number.substr(0, e);
    const std::size_t point = std::min(mantissa.find('.'), e);
    const std::size_t first = mantissa.find_first_of("123456789");
    std::int64_t magnitude = static_cast<std::int64_t>(point) - static_cast<std::int64_t>(first);
    if (e < number.size())
        magnitude += exponentValue(number.substr(e + 1));
    return magnitude > 0 ? std::numeric_limits<double>::infinity() : 0.0;
}

} // namespace

double leadingNumber(std::string_view text) noexcept {
    std::size_t start = text.find_first_not_of(" \t");
    if (start == std::string_view::npos)
        return 0;
    const bool negative = text[start] == '-';
    if (negative || text[start] == '+')
        ++start;
    const std::size_t mantissa = mantissaEnd(text, start);
    if (mantissa == start)
        return 0;
    const std::string_view number = text.substr(start, exponentEnd(text, mantissa) - start);
    double value = 0;
    const auto result = std::from_chars(number.data(), number.data() + number.size(), value);
    if (result.ec == std::errc::result_out_of_range)
        value = outOfRange(number);
    return negative ? -value : value;
}

std::int32_t roundToInt32(double value) noexcept {
    if (std::isnan(value))
        return 0;
    constexpr double lowest = std::numeric_limits<std::int32_t>::min();
    constexpr double highest = std::numeric_limits<std::int32_t>::max();
    // remainder() takes the nearest even quotient whatever the rounding mode of the process is.
    const double clamped = std::clamp(value, lowest, highest);
    return static_cast<std::int32_t>(clamped - std::remainder(clamped, 1.0));
}

std::int32_t leadingInt32(std::string_view text) noexcept {
    return roundToInt32(leadingNumber(text));
}

bool isAllDigits(std::string_view text) noexcept {
    return !text.empty() && std::all_of(text.begin(), text.end(), isDigit);
}

} // namespace ov
