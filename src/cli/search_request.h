// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "cli/exit_code.h"
#include "dictation/search/dictation_list.h"
#include "export/document.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

// A search as the command line asks for it, the same for `find` and `export`.

namespace ov::cli {

class Session;
class TerminalInterface;

constexpr std::int32_t usualLimit = 999999;

// As typed.
struct SearchOptions {
    std::optional<std::string> root; // native; else the dictation root of the settings
    std::vector<std::string> criteria;
    bool any = false;
    std::optional<std::string> criteriaFile; // native
    std::int32_t maxDepth = 50;
    std::int32_t limit = usualLimit;
    std::vector<std::string> columns;
    std::optional<std::string> sort; // KEY or KEY:desc
};

struct SortOrder {
    std::int32_t field = 0;
    bool descending = false;
};

// Once the options have been understood.
struct SearchRequest {
    std::string root;
    std::vector<std::string> criteria;
    bool all = true; // criteria must match
    std::vector<exporting::Column> columns;
    std::optional<SortOrder> sort;
    std::int32_t maxDepth = 0;
    std::int32_t limit = 0;
};

// The columns that the user has chosen to see, by their keys.
std::vector<std::string> chosenColumns();

// `found` when the request can be made; otherwise what is wrong has been told. `usualColumns` are
// the keys of those that are taken when the options name none.
ExitCode readSearch(const SearchOptions& options, const std::vector<std::string>& usualColumns,
                    SearchRequest& request);

// Fills `hits` and shows the progress. `idle` is called now and then, and before the progress is
// shown; it may stop the search with modDictation::requestSearchAbort().
void search(const SearchRequest& request, const Session& session, TerminalInterface& terminal,
            modDictation::DictationList& hits, const std::function<void()>& idle);

// Tells what was left out and whether the search ended early.
void reportSearch(const modDictation::DictationList& hits);

ExitCode searchResult(const modDictation::DictationList& hits);

} // namespace ov::cli
