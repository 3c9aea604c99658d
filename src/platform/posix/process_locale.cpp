// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "platform/process_locale.h"

#include <algorithm>
#include <cstdint>
#include <ctime>
#include <langinfo.h>

namespace ov::platform {

namespace {

// What two conversions are short for.
std::string_view spelledOut(std::string_view format) noexcept {
    if (format == "%D")
        return "%m/%d/%y";
    return format == "%F" ? "%Y-%m-%d" : format;
}

// One "%..." of a format.
struct Conversion {
    char letter = '\0'; // none: the format is at its end
    bool padded = true;
    char after = '\0';
};

Conversion takeConversion(std::string_view& format) {
    Conversion taken;
    format.remove_prefix(std::min(format.find('%'), format.size()));
    // Flags and modifiers: "%-d" has no zero in front, "%Ey" counts the years of an era.
    const std::size_t letter = std::min(format.find_first_not_of("-_0^#EO", 1), format.size());
    taken.padded = format.substr(0, letter).find_first_of("-_") == std::string_view::npos;
    format.remove_prefix(letter);
    if (!format.empty()) {
        taken.letter = format.front();
        format.remove_prefix(1);
    }
    if (!format.empty())
        taken.after = format.front();
    return taken;
}

DateOrder orderStartingWith(char letter) noexcept {
    switch (letter) {
    case 'd':
    case 'e':
        return DateOrder::dayMonthYear;
    case 'y':
    case 'Y':
        return DateOrder::yearMonthDay;
    default:
        return DateOrder::monthDayYear;
    }
}

bool usesTwelveHours(std::string_view format) {
    return format.find("%I") != std::string_view::npos ||
           format.find("%r") != std::string_view::npos ||
           format.find("%l") != std::string_view::npos;
}

// glibc counts the first weekday (1 to 7) from the day that _NL_TIME_WEEK_1STDAY names: a Sunday
// (19971130) or a Monday (19971201).
int readFirstWeekday() {
    const int first = static_cast<unsigned char>(*nl_langinfo(_NL_TIME_FIRST_WEEKDAY));
    // The word itself is returned in the place of the pointer.
    const auto origin = static_cast<unsigned>(
        reinterpret_cast<std::uintptr_t>(nl_langinfo(_NL_TIME_WEEK_1STDAY)) & 0xFFFFFFFFU);
    const int offset = origin == 19971201U ? 1 : 0;
    return (first - 1 + offset + 7) % 7;
}

} // namespace

void readDateFormat(std::string_view format, Locale& result) {
    constexpr std::string_view datePieces = "deymYbBh";
    format = spelledOut(format);
    char first = '\0';
    for (Conversion c = takeConversion(format); c.letter != '\0'; c = takeConversion(format)) {
        if (c.letter == 'd' || c.letter == 'e')
            result.dayTwoDigits = c.padded && c.letter == 'd';
        if (first != '\0' || datePieces.find(c.letter) == std::string_view::npos)
            continue;
        first = c.letter;
        if (c.after == '.' || c.after == '/' || c.after == '-')
            result.dateSeparator = c.after;
    }
    result.dateOrder = orderStartingWith(first);
}

Locale processLocale() {
    Locale result;
    readDateFormat(nl_langinfo(D_FMT), result);
    result.twelveHours = usesTwelveHours(nl_langinfo(T_FMT)) && *nl_langinfo(AM_STR) != '\0';
    if (result.twelveHours) {
        result.am = nl_langinfo(AM_STR);
        result.pm = nl_langinfo(PM_STR);
    }
    const char* decimal = nl_langinfo(RADIXCHAR);
    result.decimalSign = decimal[0] != '\0' && decimal[1] == '\0' ? decimal[0] : '.';
    result.firstWeekday = readFirstWeekday();
    return result;
}

DateTime now() {
    const std::time_t seconds = std::time(nullptr);
    std::tm local{};
    localtime_r(&seconds, &local);
    return {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday,
            local.tm_hour,        local.tm_min,     local.tm_sec};
}

} // namespace ov::platform
