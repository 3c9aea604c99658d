// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "platform/locale.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

// Dates of dictations: the written form in a file name, and the serial number.
//
// A serial is the days since 30 December 1899 with the time of day as the fraction. Years run
// from 100 to 9999; what lies outside is no date.

namespace ov::modDictation {

constexpr std::int32_t secondsPerDay = 86400;

struct DateSerial {
    std::int32_t day = 0;    // days since 30 December 1899
    std::int32_t second = 0; // of the day, 0 to 86399
    bool hasTime = false;    // a time was written, also if it is midnight
    bool operator==(const DateSerial&) const = default;
};

// Days and parts of a day, as spreadsheets count.
constexpr double daysOf(const DateSerial& serial) noexcept {
    return serial.day + serial.second / static_cast<double>(secondsPerDay);
}

// The written form: day, month and year parted by "-" or ".", then, unless `dateOnly`, a blank
// and hours, minutes and seconds parted by "$" ("24.12.2003 17$05$00"). Months, days and times
// beyond their range roll over; with a number above 32767 it is no date. Two digits of the year:
// 0 to 29 are 2000 to 2029, 30 to 99 are 1930 to 1999. Never allocates.
std::optional<DateSerial> ReadFieldDate(std::string_view text, bool dateOnly) noexcept;

// A written date, or a whole text that is a serial ("37979.7118"). Blanks around are ignored.
std::optional<DateSerial> readDateOrSerial(std::string_view text) noexcept;

// Serial as a decimal number with a point, at most 15 digits: "37979.7118055556".
void appendSerialText(const DateSerial& serial, std::string& out);

std::int32_t dayNumber(const platform::DateTime& date) noexcept;
platform::DateTime dateOf(const DateSerial& serial) noexcept;

// 0 Sunday to 6 Saturday.
int weekdayOf(std::int32_t day) noexcept;

// Hours, minutes and, if given, seconds parted by ":" or "$" ("00$02$15"), blanks around them
// ignored, as seconds. Hours may exceed 23: it is a length. Nothing for any other text.
std::optional<std::int32_t> readSeconds(std::string_view text) noexcept;

// "00:02:15"
std::string secondsText(std::int32_t seconds);

} // namespace ov::modDictation
