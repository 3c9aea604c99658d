// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "cli/search_request.h"

#include "cli/messages.h"
#include "cli/options/typed_words.h"
#include "cli/session.h"
#include "cli/terminal_interface.h"
#include "dictation/field_table.h"
#include "dictation/typed/criterion_text.h"
#include "dictation/typed/search_text.h"
#include "platform/directories.h"
#include "platform/text.h"
#include "platform/threads/coarse_clock.h"
#include "support/modFilePath.h"

#include <stop_token>
#include <utility>

namespace ov::cli {

using exporting::Column;
using modDictation::DictationList;
using modDictation::fieldKeys;
using modDictation::fieldOfKey;
using modDictation::SearchReport;

namespace {

constexpr std::int32_t pathWidth = 6000; // twips

// Whether all criteria must match is what the file says.
bool readCriteriaFile(const std::string& native, modDictation::Search& search) {
    std::string content;
    const platform::Status read = platform::readFile(platform::fromNativePath(native), content);
    if (!read.ok()) {
        complain(read.description());
        return false;
    }
    const modDictation::SearchText text = modDictation::readSearchText(content);
    search.criteria = text.search.criteria;
    search.all = text.search.all;
    if (text.skipped > 0)
        complain(native + ": lines that are no criteria: " + std::to_string(text.skipped));
    // Without any, every dictation would match.
    if (text.search.criteria.empty())
        complain(native + ": holds no criteria");
    return !text.search.criteria.empty();
}

std::optional<Column> columnOfKey(const std::string& key) {
    if (platform::equalsIgnoringCase(key, "path"))
        return Column{"path", exporting::pathColumn, "path", "path", pathWidth};
    const std::int32_t field = fieldOfKey(key);
    if (field == modDictation::noField) {
        complain("there is no column \"" + key + "\"; columns are: path, " + fieldKeys());
        return std::nullopt;
    }
    Column column = exporting::columnOf(field);
    if (column.key.empty())
        column.key = key;
    return column;
}

bool readColumns(const std::vector<std::string>& keys, std::vector<Column>& columns) {
    for (const std::string& key : keys) {
        const auto column = columnOfKey(std::string(platform::trimmed(key)));
        if (!column)
            return false;
        columns.push_back(*column);
    }
    return true;
}

bool readSort(const std::string& text, std::optional<SortOrder>& sort) {
    const std::size_t colon = text.find(':');
    const std::string direction = colon == std::string::npos ? "asc" : text.substr(colon + 1);
    const std::int32_t field = fieldOfKey(std::string_view(text).substr(0, colon));
    if (field == modDictation::noField || (direction != "asc" && direction != "desc")) {
        complain("cannot sort by \"" + text +
                 "\"; say KEY or KEY:desc, with KEY one of: " + fieldKeys());
        return false;
    }
    sort = SortOrder{field, direction == "desc"};
    return true;
}

bool findRoot(const TypedWords& typed, std::string& root) {
    using namespace modFilePath;
    root = typed.root ? AddBackslash(platform::fromNativePath(*typed.root))
                      : GetDirectory(directory_id::dictationTree);
    if (root.empty()) {
        complain("no folder was given and the settings name none; give one, or set DictationDir in "
                 "section [Directories] of OVSearch.cfg");
        tellTakenWords(typed);
        return false;
    }
    const platform::Status opened = platform::DirectoryReader().open(root);
    if (opened.ok())
        return true;
    complain(opened.description());
    tellTakenWords(typed);
    return false;
}

void showProgress(const Session& session, const SearchReport& soFar, const DictationList& hits,
                  TerminalInterface& terminal) {
    terminal.showProgress(std::to_string(soFar.filesTested) + " dictations, " +
                          std::to_string(hits.size()) + " hits, in " +
                          platform::toNativePath(session.host().currentFolder()));
}

} // namespace

std::vector<std::string> chosenColumns() {
    std::vector<std::string> keys;
    for (const modDictation::SearchField* field : modDictation::columnFields())
        if (field->Selectable)
            keys.emplace_back(modDictation::fieldDefinition(field->Id).key);
    return keys;
}

ExitCode readSearch(const SearchOptions& options, const std::vector<std::string>& usualColumns,
                    SearchRequest& request) {
    modDictation::Search& search = request.search;
    if (options.criteriaFile && !readCriteriaFile(*options.criteriaFile, search))
        return ExitCode::unreadable;
    const TypedWords typed = findRootAmong(options.words, options.root);
    search.all = search.all && !options.any;
    if (!addCriteria(typed, search) ||
        !readColumns(options.columns.empty() ? usualColumns : options.columns, request.columns) ||
        (options.sort && !readSort(*options.sort, request.sort)))
        return ExitCode::usage;
    if (!findRoot(typed, search.root))
        return ExitCode::unreadable;
    search.all = search.all || search.criteria.empty();
    search.depth = options.maxDepth;
    search.limit = options.limit;
    return ExitCode::found;
}

SearchReport search(const modDictation::Search& what, const Session& session,
                    TerminalInterface& terminal, DictationList& hits,
                    const std::function<bool()>& goOn,
                    std::shared_ptr<modDictation::RememberedStore> remembered) {
    constexpr std::int64_t progressIntervalMs = 100;
    std::int64_t nextProgress = platform::coarseMilliseconds() + progressIntervalMs;
    std::stop_source stop;
    const auto watch = [&](const SearchReport& soFar) {
        if (!goOn() || TerminalInterface::interrupted())
            stop.request_stop();
        if (platform::coarseMilliseconds() < nextProgress)
            return;
        nextProgress = platform::coarseMilliseconds() + progressIntervalMs;
        showProgress(session, soFar, hits, terminal);
    };
    SearchReport report = modDictation::search(
        what, hits,
        {.stop = stop.get_token(), .watch = watch, .remembered = std::move(remembered)});
    terminal.clearProgress();
    return report;
}

} // namespace ov::cli
