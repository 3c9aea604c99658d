// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

// Numbers as in text_ids.h, of what is said of a filter that cannot be read as a whole.

namespace ov::text_id {

constexpr std::int32_t filterUnfinished = 1383; // behind the number of rows
constexpr std::int32_t filterTooLong = 1384;    // likewise
constexpr std::int32_t filterLeavesOut = 1385;  // %1%: what is left out
constexpr std::int32_t filterHasTooMany = 1386; // %1%: how many criteria it may have

} // namespace ov::text_id
