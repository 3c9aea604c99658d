// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "platform/locale.h"

#include "platform/process_locale.h"
#include "platform/text.h"

#include <array>
#include <charconv>
#include <chrono>
#include <utility>

namespace ov::platform {

namespace {

struct LocaleState {
    std::optional<Locale> current;
};

LocaleState& localeState() {
    thread_local LocaleState ofThread;
    return ofThread;
}

// For rows by the million: the general formatter takes ten times as long.
std::string padded(int value, std::size_t digits) {
    std::array<char, 16> text{};
    char* const end = std::to_chars(text.data(), text.data() + text.size(), value).ptr;
    std::string number(text.data(), static_cast<std::size_t>(end - text.data()));
    if (value >= 0 && number.size() < digits)
        number.insert(0, digits - number.size(), '0');
    return number;
}

std::string joined(const std::string& a, const std::string& b, const std::string& c, char between) {
    return a + between + b + between + c;
}

// `rest` stands behind the hour.
std::string clockText(const DateTime& time, const std::string& rest) {
    const Locale& own = locale();
    if (!own.twelveHours)
        return padded(time.hour, 2) + rest;
    const int hour = time.hour % 12 == 0 ? 12 : time.hour % 12;
    return padded(hour, 2) + rest + " " + (time.hour < 12 ? own.am : own.pm);
}

struct Piece {
    int value = 0;
    std::size_t digits = 0;
};

struct SplitDate {
    std::array<Piece, 3> pieces{};
    char separator = '\0';
};

// Three numbers with the same one of ".", "/" or "-" between them and nothing else.
std::optional<SplitDate> splitDate(std::string_view text) {
    const std::size_t at = text.find_first_of("./-");
    if (at == std::string_view::npos)
        return std::nullopt;
    SplitDate split{{}, text[at]};
    auto& [pieces, separator] = split;
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        const std::size_t end = i < 2 ? text.find(separator) : text.size();
        if (end == std::string_view::npos || end == 0 || end > 4)
            return std::nullopt;
        const auto [stop, error] = std::from_chars(text.data(), text.data() + end, pieces[i].value);
        if (error != std::errc{} || stop != text.data() + end || text.front() == '-')
            return std::nullopt;
        pieces[i].digits = end;
        text.remove_prefix(i < 2 ? end + 1 : end);
    }
    return split;
}

std::optional<int> fullYear(const Piece& year) {
    if (year.digits == 4)
        return year.value;
    if (year.digits != 2)
        return std::nullopt;
    return year.value + (year.value < 30 ? 2000 : 1900);
}

std::optional<DateTime> checkedDate(const Piece& year, const Piece& month, const Piece& day) {
    const auto full = fullYear(year);
    if (!full || month.digits > 2 || day.digits > 2 || *full < 100)
        return std::nullopt;
    const std::chrono::year_month_day date{std::chrono::year{*full},
                                           std::chrono::month{static_cast<unsigned>(month.value)},
                                           std::chrono::day{static_cast<unsigned>(day.value)}};
    if (!date.ok())
        return std::nullopt;
    DateTime result;
    result.year = *full;
    result.month = month.value;
    result.day = day.value;
    return result;
}

} // namespace

const Locale& locale() {
    LocaleState& current = localeState();
    if (!current.current)
        current.current = processLocale();
    return *current.current;
}

void setLocale(std::optional<Locale> locale) {
    localeState().current = std::move(locale);
}

std::string formatShortDate(const DateTime& date) {
    const Locale& own = locale();
    const std::size_t dayDigits = own.dayTwoDigits ? 2 : 1;
    const std::string day = padded(date.day, dayDigits);
    const std::string month = padded(date.month, dayDigits);
    const std::string year = padded(date.year, 4);
    const char separator = own.dateSeparator;
    switch (own.dateOrder) {
    case DateOrder::dayMonthYear:
        return joined(day, month, year, separator);
    case DateOrder::monthDayYear:
        return joined(month, day, year, separator);
    case DateOrder::yearMonthDay:
        break;
    }
    return joined(year, month, day, separator);
}

std::string formatIsoDate(const DateTime& date) {
    return joined(padded(date.year, 4), padded(date.month, 2), padded(date.day, 2), '-');
}

std::string formatLongTime(const DateTime& time) {
    return clockText(time, ":" + padded(time.minute, 2) + ":" + padded(time.second, 2));
}

std::string formatShortTime(const DateTime& time) {
    return clockText(time, ":" + padded(time.minute, 2));
}

std::optional<DateTime> parseDate(std::string_view text) {
    const auto split = splitDate(trimmed(text));
    if (!split)
        return std::nullopt;
    const auto& [a, b, c] = split->pieces;
    if (a.digits == 4)
        return checkedDate(a, b, c);
    if (split->separator == '.')
        return checkedDate(c, b, a);
    switch (locale().dateOrder) {
    case DateOrder::dayMonthYear:
        return checkedDate(c, b, a);
    case DateOrder::monthDayYear:
        return checkedDate(c, a, b);
    case DateOrder::yearMonthDay:
        break;
    }
    return checkedDate(a, b, c);
}

char listSeparator() {
    return locale().decimalSign == ',' ? ';' : ',';
}

std::optional<double> parseNumber(std::string_view text) {
    std::string number(trimmed(text));
    const char decimal = locale().decimalSign;
    if (decimal != '.') {
        if (number.find('.') != std::string::npos)
            return std::nullopt;
        if (const std::size_t at = number.find(decimal); at != std::string::npos)
            number[at] = '.';
    }
    const char* first = number.data();
    const char* last = first + number.size();
    if (first != last && *first == '+' && first + 1 != last && first[1] != '-')
        ++first;
    double value = 0;
    const auto [stop, error] = std::from_chars(first, last, value, std::chars_format::general);
    const bool digitsOnly = number.find_first_not_of("+-.eE0123456789") == std::string::npos;
    if (error != std::errc{} || stop != last || !digitsOnly)
        return std::nullopt;
    return value;
}

} // namespace ov::platform
