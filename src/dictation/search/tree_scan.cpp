// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "dictation/search/tree_scan.h"

#include "dictation/search/search.h"

#include <algorithm>
#include <iterator>

namespace ov::modDictation {

std::int32_t SearchDictations(std::string_view root, std::span<const std::string> criteria,
                              std::int32_t maxDepth, DictationList& results, bool storeFullPath,
                              bool compareAnd, std::int32_t maxResults) {
    Search what{std::string(root), {}, compareAnd, maxDepth, maxResults};
    std::ranges::transform(criteria, std::back_inserter(what.criteria), ParseCriteriaString);
    const std::int32_t before = results.size();
    if (storeFullPath) {
        search(what, results);
        return results.size() - before;
    }
    what.limit -= before;
    DictationList found;
    const auto takeNames = [&] {
        for (std::int32_t i = 1; i <= found.size(); ++i)
            results.add({}, found[i].name);
    };
    try {
        search(what, found);
    } catch (...) { // what was found by then stays
        takeNames();
        throw;
    }
    takeNames();
    return found.size();
}

} // namespace ov::modDictation
