// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "platform/locale.h"

#include <cstdint>
#include <ctime>

#include <langinfo.h>

#include "platform/process_locale.h"

namespace ov::platform {

namespace {

// Reads "%d.%m.%Y" and its like: what comes first, what stands between, one or two digits.
void readDateFormat(std::string_view format, Locale& result) {
    std::string order;
    for (std::size_t i = 0; i + 1 < format.size(); ++i) {
        if (format[i] != '%')
            continue;
        bool padded = true;
        if (format[i + 1] == '-' && i + 2 < format.size()) {
            padded = false;
            ++i;
        }
        const char field = format[++i];
        if (field == 'D') {
            readDateFormat("%m/%d/%y", result);
            return;
        }
        if (field == 'F') {
            readDateFormat("%Y-%m-%d", result);
            return;
        }
        if (field == 'd' || field == 'e') {
            order.push_back('d');
            result.dayTwoDigits = padded && field == 'd';
        } else if (field == 'm') {
            order.push_back('m');
        } else if (field == 'y' || field == 'Y') {
            order.push_back('y');
        }
        const char after = i + 1 < format.size() ? format[i + 1] : '\0';
        if (order.size() == 1 && (after == '.' || after == '/' || after == '-'))
            result.dateSeparator = after;
    }
    if (order.starts_with('d'))
        result.dateOrder = DateOrder::dayMonthYear;
    else if (order.starts_with('y'))
        result.dateOrder = DateOrder::yearMonthDay;
    else
        result.dateOrder = DateOrder::monthDayYear;
}

bool usesTwelveHours(std::string_view format) {
    return format.find("%I") != std::string_view::npos ||
           format.find("%r") != std::string_view::npos ||
           format.find("%l") != std::string_view::npos;
}

// glibc counts the first weekday (1 to 7) from the day that _NL_TIME_WEEK_1STDAY names: a Sunday
// (19971130) or a Monday (19971201).
int readFirstWeekday() {
    const int first = *nl_langinfo(_NL_TIME_FIRST_WEEKDAY);
    // The word itself is returned in the place of the pointer.
    const auto origin = static_cast<unsigned>(
        reinterpret_cast<std::uintptr_t>(nl_langinfo(_NL_TIME_WEEK_1STDAY)) & 0xFFFFFFFFU);
    const int offset = origin == 19971201U ? 1 : 0;
    return (first - 1 + offset + 7) % 7;
}

} // namespace

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
