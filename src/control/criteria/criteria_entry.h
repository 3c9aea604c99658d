// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include <string>
#include <vector>

namespace ov {

// One line of the criteria list.
struct CriteriaEntry {
    std::string criterion; // a criteria string
    bool leftOut = false;  // takes no part in searches for now
    bool operator==(const CriteriaEntry&) const = default;
};

using CriteriaEntries = std::vector<CriteriaEntry>;

} // namespace ov
