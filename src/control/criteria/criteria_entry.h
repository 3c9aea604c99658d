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

// All that the criteria's half of the window asks for.
struct AskedCriteria {
    CriteriaEntries entries;
    bool all = true; // of them must match, or any one
    bool operator==(const AskedCriteria&) const = default;
};

} // namespace ov
