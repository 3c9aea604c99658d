// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "dictation/search/search.h"

#include <cstdint>
#include <optional>
#include <stop_token>
#include <string>
#include <vector>

namespace ov {

// What a walk counts on its way, see SearchReport.
struct CriterionCounts {
    std::int64_t tested = 0;
    std::vector<std::int64_t> matched;
};

// Asks a catalogue for them, a question for each criterion. From any thread; nothing when it was
// stopped or cannot be asked.
std::optional<CriterionCounts> countCriteria(const std::string& place,
                                             const modDictation::Search& what,
                                             const std::stop_token& stop);

} // namespace ov
