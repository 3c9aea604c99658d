// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "platform/locale.h"

#include <optional>
#include <string>
#include <string_view>

namespace ov::modDictation {

// What days are called in the user's language.
struct DayWords {
    std::string yesterday;
    std::string today;
    std::string tomorrow;
};

// The day that somebody means who types
//   a word of `words`, in any letter case
//   "-7", "+3"         so many days before or after `today`
//   "21.11.", "21.11"  in the year of `today`; also with "/" or "-" in the locale's order
//   "2111", "211126", "21112026"  without anything between, in the locale's order
//   anything that platform::parseDate() takes
// Blanks around it are ignored. Nothing for any other text and for days that are not.
std::optional<platform::DateTime>
readTypedDate(std::string_view text, const platform::DateTime& today, const DayWords& words);

} // namespace ov::modDictation
