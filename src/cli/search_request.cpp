// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "cli/search_request.h"

#include "cli/criterion_text.h"
#include "cli/messages.h"
#include "cli/session.h"
#include "cli/terminal_interface.h"
#include "dictation/field_table.h"
#include "dictation/search/criterion.h"
#include "dictation/search/tree_scan.h"
#include "platform/coarse_clock.h"
#include "platform/files.h"
#include "platform/text.h"
#include "support/modFilePath.h"

namespace ov::cli {

using exporting::Column;
using modDictation::DictationList;

namespace {

constexpr std::int32_t pathWidth = 6000; // twips

bool readCriteria(const std::vector<std::string>& texts, std::vector<std::string>& criteria) {
    for (const std::string& text : texts) {
        const ParsedCriterion parsed = parseCriterion(text);
        if (!parsed.ok()) {
            complain("criterion \"" + text + "\": " + parsed.error);
            return false;
        }
        const modDictation::Criterion& c = parsed.criterion;
        criteria.push_back(
            modDictation::BuildCriteriaString(c.Field, c.Operator, c.Value1, c.Value2));
    }
    return true;
}

bool readCriteriaFile(const std::string& native, std::vector<std::string>& criteria) {
    std::string content;
    const platform::Status read = platform::readFile(platform::fromNativePath(native), content);
    if (!read.ok()) {
        complain(read.description());
        return false;
    }
    const modDictation::CriteriaLines lines = modDictation::readCriteriaLines(content);
    criteria.insert(criteria.end(), lines.criteria.begin(), lines.criteria.end());
    if (lines.skipped > 0)
        complain(native + ": lines that are no criteria: " + std::to_string(lines.skipped));
    // Without any, every dictation would match.
    if (lines.criteria.empty())
        complain(native + ": holds no criteria");
    return !lines.criteria.empty();
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

bool findRoot(const std::optional<std::string>& typed, std::string& root) {
    using namespace modFilePath;
    root = typed ? AddBackslash(platform::fromNativePath(*typed))
                 : GetDirectory(directory_id::dictationTree);
    if (root.empty()) {
        complain("no folder was given and the settings name none; give one, or set DictationDir in "
                 "section [Directories] of OVSearch.cfg");
        return false;
    }
    const platform::Status opened = platform::DirectoryReader().open(root);
    if (!opened.ok())
        complain(opened.description());
    return opened.ok();
}

void showProgress(const Session& session, const DictationList& hits, TerminalInterface& terminal) {
    terminal.showProgress(std::to_string(modDictation::lastScanReport().filesTested) +
                          " dictations, " + std::to_string(hits.size()) + " hits, in " +
                          platform::toNativePath(session.host().currentFolder()));
}

void reportProblems() {
    const modDictation::ScanReport& report = modDictation::lastScanReport();
    for (const platform::Status& problem : report.problems)
        complain(problem.description());
    const auto told = static_cast<std::int64_t>(report.problems.size());
    const std::int64_t all = report.foldersUnreadable + report.namesSkipped;
    if (all > told)
        complain(std::to_string(all - told) + " more were left out");
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
    if (!readCriteria(options.criteria, request.criteria) ||
        !readColumns(options.columns.empty() ? usualColumns : options.columns, request.columns) ||
        (options.sort && !readSort(*options.sort, request.sort)))
        return ExitCode::usage;
    if ((options.criteriaFile && !readCriteriaFile(*options.criteriaFile, request.criteria)) ||
        !findRoot(options.root, request.root))
        return ExitCode::unreadable;
    request.all = !options.any || request.criteria.empty();
    request.maxDepth = options.maxDepth;
    request.limit = options.limit;
    return ExitCode::found;
}

void search(const SearchRequest& request, const Session& session, TerminalInterface& terminal,
            DictationList& hits, const std::function<void()>& idle) {
    constexpr std::int64_t progressIntervalMs = 100;
    std::int64_t nextProgress = platform::coarseMilliseconds() + progressIntervalMs;
    terminal.setIdleHandler([&] {
        idle();
        if (platform::coarseMilliseconds() < nextProgress)
            return;
        nextProgress = platform::coarseMilliseconds() + progressIntervalMs;
        showProgress(session, hits, terminal);
    });
    modDictation::SearchDictations(request.root, request.criteria, request.maxDepth, hits, true,
                                   request.all, request.limit);
    terminal.setIdleHandler({});
    terminal.clearProgress();
}

void reportSearch(const DictationList& hits) {
    reportProblems();
    if (TerminalInterface::interrupted() && modDictation::lastScanReport().stopped)
        complain("stopped; what was found until then is shown");
    else if (modDictation::lastScanReport().limitReached)
        complain("ended after " + std::to_string(hits.size()) +
                 " dictations, there may be more; --limit sets how many");
}

ExitCode searchResult(const DictationList& hits) {
    if (modDictation::lastScanReport().rootVanished)
        return ExitCode::unreadable;
    if (!hits.empty())
        return ExitCode::found;
    // What could not be read may hold what was looked for.
    const bool incomplete = modDictation::lastScanReport().foldersUnreadable > 0;
    return incomplete ? ExitCode::unreadable : ExitCode::nothingFound;
}

} // namespace ov::cli
