// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "dictation/search/matching.h"
#include "platform/locale.h"

#include <cstdint>
#include <optional>
#include <string_view>

// Dates and lengths as the quick form of criteria has them, see quick_text.h.

namespace ov::modDictation {

struct Period {
    NumberRange days;                           // serial
    std::int32_t operatorId = operator_id::any; // that means them on any day; or else any
};

//   period = WORD | NUMBER | year | month | day
//   WORD   = an operator of dates without a value: "this-week", "yesterday"; or how the user's
//            language calls yesterday, today and tomorrow
//   NUMBER = ( "-" | "+" ) digits [ "d" | "w" | "m" | "y" ]: the day so far from `now`
//   year   = "2026", of 1900 to 2099          month = "2026-11"
//   day    = what readTypedDate() reads
std::optional<Period> quickPeriod(std::string_view text, const platform::DateTime& now);

//   "90s", "5m", "1h30m", "1h 30m", or HH:MM:SS or HH:MM
std::optional<std::int32_t> quickSeconds(std::string_view text);

} // namespace ov::modDictation
