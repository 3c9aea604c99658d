// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

// How the user's country writes dates, times and numbers: on Linux from the locale that the
// environment names, LC_TIME and LC_NUMERIC.

namespace ov::platform {

struct DateTime {
    int year = 0;
    int month = 0; // 1 to 12
    int day = 0;   // 1 to 31
    int hour = 0;
    int minute = 0;
    int second = 0;
    bool operator==(const DateTime&) const = default;
};

enum class DateOrder { dayMonthYear, monthDayYear, yearMonthDay };

struct Locale {
    DateOrder dateOrder = DateOrder::monthDayYear;
    char dateSeparator = '/';
    bool dayTwoDigits = true; // 05.03.2026, not 5.3.2026
    bool twelveHours = false; // 05:03:09 PM
    std::string am = "AM";
    std::string pm = "PM";
    char decimalSign = '.';
    int firstWeekday = 0;    // 0 Sunday to 6 Saturday
    std::string groupSign{}; // between thousands: "." or ","; empty for none
};

// What is known of "de_DE.UTF-8" or "en_GB", whether the system has it installed or not; "C",
// "POSIX" and the empty name are as above.
Locale localeNamed(const std::string& name);

// That of the process, read at the first use of each thread.
const Locale& locale();

// Replaces this thread's locale, for tests and for a host that has its own settings; nothing
// goes back to that of the process.
void setLocale(std::optional<Locale> locale);

// "21.11.2026": always with a four-digit year. To be shown.
std::string formatShortDate(const DateTime& date);
// "2026-11-21". To be kept, since a change of locale must not change the day.
std::string formatIsoDate(const DateTime& date);
// "17:05:00"
std::string formatLongTime(const DateTime& time);
// "17:05"
std::string formatShortTime(const DateTime& time);

// A date in the locale's order with "/" or "-" between, in every locale "21.11.2026" and ISO
// "2026-11-21"; two or four digits of the year (0 to 29 are 2000 to 2029, 30 to 99 are 1930 to
// 1999).
// Blanks around it are ignored. Nothing for a text that is no date or names a day that is not.
std::optional<DateTime> parseDate(std::string_view text);

// A whole text that is a number in the locale's form: sign, digits, decimal sign, exponent;
// blanks around it. Nothing otherwise.
std::optional<double> parseNumber(std::string_view text);

// What parts the cells of a CSV file: ";" where "," is the decimal sign.
char listSeparator();

// The wall clock.
DateTime now();
// What it showed at that moment, nanoseconds since 1970, in this time zone.
DateTime localTime(std::int64_t nanoseconds);

} // namespace ov::platform
