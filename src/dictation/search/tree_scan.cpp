// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "dictation/search/tree_scan.h"

#include "dictation/search/search.h"

#include <algorithm>
#include <iterator>
#include <stop_token>

namespace ov::modDictation {

namespace {

struct State {
    bool searchRunning = false;
    std::stop_source searchAbort; // of this search, or of the next
};

State& state() noexcept {
    thread_local State threadState;
    return threadState;
}

// Every way out of a search leaves the thread ready for the next one.
class RunningSearch {
public:
    RunningSearch() { state().searchRunning = true; }
    ~RunningSearch() { state() = {}; }
    RunningSearch(const RunningSearch&) = delete;
    RunningSearch& operator=(const RunningSearch&) = delete;
};

} // namespace

std::int32_t SearchDictations(std::string_view root, std::span<const std::string> criteria,
                              std::int32_t maxDepth, DictationList& results, bool storeFullPath,
                              bool compareAnd, std::int32_t maxResults) {
    if (state().searchRunning)
        return 0;
    const RunningSearch running;
    Search what{std::string(root), {}, compareAnd, maxDepth, maxResults};
    std::ranges::transform(criteria, std::back_inserter(what.criteria), ParseCriteriaString);
    const std::int32_t before = results.size();
    what.limit = maxResults - before;
    DictationList found;
    search(what, found, state().searchAbort.get_token());
    for (std::int32_t i = 1; i <= found.size(); ++i)
        results.add(storeFullPath ? found[i].directory : std::string_view(), found[i].name);
    return results.size() - before;
}

bool isSearchRunning() noexcept {
    return state().searchRunning;
}

void requestSearchAbort() noexcept {
    state().searchAbort.request_stop();
}

} // namespace ov::modDictation
