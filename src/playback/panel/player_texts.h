// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <cstdint>
#include <string_view>

namespace ov {

// What the panel shows for a mode word of the device, in the user's language: "-" for none, empty
// for a word it does not know.
QString MciModeText(std::string_view mode);

// "01:02:03" for a position in the device's units, `rate` of which make a second; "00:00:00" for
// a rate that is none.
QString FormatPlayTime(std::int32_t position, std::int32_t rate);

// What a time stamp is made after: "%1%" stands for the time, "%2%" for what the dictation is.
constexpr const char* usualTimeStampForm = "[%1%]";
// Whether it names the time.
bool isTimeStampForm(std::string_view form);
// After the usual form where this one names no time.
QString timeStamp(std::string_view form, const QString& time, const QString& title);

} // namespace ov
