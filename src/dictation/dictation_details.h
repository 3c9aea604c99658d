// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "dictation/dictation.h"

#include <cstdint>
#include <string>
#include <vector>

namespace ov::modDictation {

// A field of one dictation, as a list shows it and as it stands in the name.
struct Detail {
    std::string key;     // in the terminal; empty for a field that cannot be searched
    std::string caption; // long; the tag of a field that cannot be searched ("@@31$")
    std::string shown;
    std::string raw;        // escapes included; "-" for a field that the name lacks
    bool isMissing = false; // the name lacks it
};

// The fields of the table, then what else the name carries.
std::vector<Detail> fieldDetails(const Dictation& dictation);

// What does not come from a field but from the path or the name as a whole, its folder in full.
std::vector<Detail> wholeDetails(const Dictation& dictation);

} // namespace ov::modDictation
