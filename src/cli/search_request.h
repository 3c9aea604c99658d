// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "cli/exit_code.h"
#include "cli/told_report.h"
#include "dictation/search/result_order.h"
#include "dictation/search/search.h"
#include "dictation/typed/quick_text.h"
#include "export/document.h"

#include <cstdint>
#include <functional>
#include <limits>
#include <optional>
#include <string>
#include <vector>

// A search as the command line asks for it, the same for `find` and `export`.

namespace ov::cli {

class Session;
class TerminalInterface;

// As typed.
struct SearchOptions {
    std::optional<std::string> root; // native; else among the words, else that of the settings
    std::vector<modDictation::QuickPart> words;
    bool any = false;
    std::optional<std::string> criteriaFile; // native
    std::int32_t maxDepth = modDictation::usualDepth;
    std::optional<std::int32_t> limit; // else usualLimit
    std::vector<std::string> columns;
    std::vector<std::string> sort; // KEY or KEY:desc each
    Telling telling;
    bool asksStore = true; // else its folders need not be there
};

// Of hits that are printed, written or whatever else they are wanted for.
struct HitLimit {
    std::int32_t count = modDictation::usualLimit;
    bool isNamed = false; // whoever named it expects no more
};

// Once the options have been understood. Where hits are sorted, the search itself has no limit: the
// first ones of their order are those of all.
struct SearchRequest {
    modDictation::Search search;
    std::vector<exporting::Column> columns;
    std::vector<modDictation::SortKey> sort;
    HitLimit limit;
    std::optional<std::int64_t> newerThan; // as NewerHits has it
    Telling telling;
    std::vector<std::string> foldersAsTexts; // see TypedWords
};

constexpr std::int32_t noLimit = std::numeric_limits<std::int32_t>::max();

// The columns that the user has chosen to see, by their keys.
std::vector<std::string> chosenColumns();

// The field of a key; noField when there is none, which has been told: "cannot <what> ...".
std::int32_t readField(const std::string& key, const std::string& what);

// `found` when the request can be made; otherwise what is wrong has been told. `usualColumns` are
// the keys of those that are taken when the options name none.
ExitCode readSearch(const SearchOptions& options, const std::vector<std::string>& usualColumns,
                    SearchRequest& request);

// Fills `hits` and shows the progress. `goOn` is asked now and then, before the progress is shown;
// false stops the search. Of `means` only what it remembers and whom it tells of folders.
modDictation::SearchReport search(const modDictation::Search& what, const Session& session,
                                  TerminalInterface& terminal, modDictation::DictationList& hits,
                                  const std::function<bool()>& goOn,
                                  modDictation::SearchMeans means = {});

} // namespace ov::cli
