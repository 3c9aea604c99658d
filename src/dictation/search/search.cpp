// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "dictation/search/search.h"

#include "dictation/search/tree_walk.h"
#include "platform/locale_module.h"
#include "support/log.h"

#include <atomic>
#include <utility>

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

SearchReport search(const Search& what, DictationList& hits, const SearchMeans& means) {
    if (state().searchRunning)
        return {};
    const RunningSearch running;
    const std::stop_callback alsoHere(
        means.stop, [abort = state().searchAbort]() mutable { abort.request_stop(); });
    if (means.remembered)
        means.remembered->startSearch();
    SearchReport report = TreeWalk(what, hits, state().searchAbort.get_token(), means).run();
    // Dates and weeks of the criteria may then not be what the user's country means by them.
    static std::atomic_flag told;
    if (platform::Status problem = platform::localeProblem();
        !problem.ok() && !told.test_and_set()) {
        WriteErrorLog(problem, "SearchDictations");
        report.localeProblem = std::move(problem);
    }
    return report;
}

bool isSearchRunning() noexcept {
    return state().searchRunning;
}

void requestSearchAbort() noexcept {
    state().searchAbort.request_stop();
}

} // namespace ov::modDictation
