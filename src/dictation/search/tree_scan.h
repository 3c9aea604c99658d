// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "dictation/search/dictation_list.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

// A search by criteria strings, one at a time on each thread; see search.h for what it does.

namespace ov::modDictation {

// Searches below `root` (a directory text), no deeper than `maxDepth` (noDepthLimit: to the end),
// and adds the hits to `results`, as full paths or bare file names, until it holds `maxResults`.
// Returns their number; 0 for a search that is started from inside another one of this thread.
std::int32_t SearchDictations(std::string_view root, std::span<const std::string> criteria,
                              std::int32_t maxDepth, DictationList& results, bool storeFullPath,
                              bool compareAnd, std::int32_t maxResults);

} // namespace ov::modDictation
