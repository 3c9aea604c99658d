// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "dictation/search/dictation_list.h"

#include <cstdint>
#include <vector>

namespace ov::modDictation {

// The order of the hits by a search field, as indexes into `list` counted from 1. Dates sort by
// day and time, lengths by seconds, codes by number, text by the alphabet of the user's language
// without regard to case, digits in it by their value (9 before 10). Hits without a value come
// first. Equal ones keep the order in which they were found, also when `descending`. Each field
// value is read once. Lets window messages be handled; `list` must not change meanwhile.
std::vector<std::int32_t> sortedOrder(const DictationList& list, std::int32_t field,
                                      bool descending);

} // namespace ov::modDictation
