// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "cli/exit_code.h"
#include "cli/told_report.h"
#include "dictation/search/search.h"
#include "dictation/typed/quick_text.h"
#include "export/document.h"

#include <cstdint>
#include <functional>
#include <memory>
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
    std::int32_t limit = modDictation::usualLimit;
    std::vector<std::string> columns;
    std::optional<std::string> sort; // KEY or KEY:desc
    Telling telling;
};

struct SortOrder {
    std::int32_t field = 0;
    bool descending = false;
};

// Once the options have been understood.
struct SearchRequest {
    modDictation::Search search;
    std::vector<exporting::Column> columns;
    std::optional<SortOrder> sort;
    Telling telling;
};

// The columns that the user has chosen to see, by their keys.
std::vector<std::string> chosenColumns();

// `found` when the request can be made; otherwise what is wrong has been told. `usualColumns` are
// the keys of those that are taken when the options name none.
ExitCode readSearch(const SearchOptions& options, const std::vector<std::string>& usualColumns,
                    SearchRequest& request);

// Fills `hits` and shows the progress. `goOn` is asked now and then, before the progress is shown;
// false stops the search.
modDictation::SearchReport search(const modDictation::Search& what, const Session& session,
                                  TerminalInterface& terminal, modDictation::DictationList& hits,
                                  const std::function<bool()>& goOn,
                                  std::shared_ptr<modDictation::RememberedStore> remembered = {});

} // namespace ov::cli
