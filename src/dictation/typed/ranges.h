// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "dictation/search/criterion.h"
#include "dictation/search/matching.h"

#include <cstdint>
#include <limits>
#include <optional>

namespace ov::modDictation {

constexpr std::int64_t lowestNumber = std::numeric_limits<std::int64_t>::min();
constexpr std::int64_t highestNumber = std::numeric_limits<std::int64_t>::max();

// That lengths of names and of criteria can have.
constexpr NumberRange possibleSeconds = {0, 32767 * 3600 + 3599};

// The criterion that asks a field of dates for these serial days, or one of lengths for these
// seconds. Nothing where none can be met: the range is empty, lies below zero seconds, or holds
// days that cannot be written.
std::optional<Criterion> rangeCriterion(const FieldDefinition& field, const NumberRange& range);

} // namespace ov::modDictation
