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
    bool indented = false; // in the group of the one above; the first of a list never is
    bool operator==(const CriteriaEntry&) const = default;
};

using CriteriaEntries = std::vector<CriteriaEntry>;

} // namespace ov
