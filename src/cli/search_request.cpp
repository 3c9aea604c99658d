// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "cli/search_request.h"

#include "cli/criteria_file.h"
#include "cli/messages.h"
#include "cli/options/did_you_mean.h"
#include "cli/options/typed_words.h"
#include "cli/session.h"
#include "cli/terminal_interface.h"
#include "dictation/field_table.h"
#include "dictation/typed/criterion_text.h"
#include "platform/directories.h"
#include "platform/files.h"
#include "platform/text.h"
#include "platform/threads/coarse_clock.h"
#include "support/modFilePath.h"

#include <algorithm>
#include <stop_token>

namespace ov::cli {

using exporting::Column;
using modDictation::DictationList;
using modDictation::fieldKeys;
using modDictation::fieldOfKey;
using modDictation::SearchReport;

namespace {

constexpr std::int32_t pathWidth = 6000; // twips

std::vector<std::string> columnKeys() {
    std::vector<std::string> keys{"path"};
    for (const modDictation::FieldDefinition& field : modDictation::fieldDefinitions())
        if (!field.key.empty())
            keys.emplace_back(field.key);
    return keys;
}

std::optional<Column> columnOfKey(const std::string& key) {
    if (platform::equalsIgnoringCase(key, "path"))
        return Column{"path", exporting::pathColumn, "path", "path", pathWidth};
    const std::int32_t field = fieldOfKey(key);
    if (field == modDictation::noField) {
        complain("there is no column \"" + key + '"' +
                 didYouMean(key, columnKeys(), "; columns are: path, " + fieldKeys()));
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

bool readSortKey(const std::string& text, std::vector<modDictation::SortKey>& keys) {
    const std::size_t colon = text.find(':');
    const std::string key = text.substr(0, colon);
    const std::string direction = colon == std::string::npos ? "asc" : text.substr(colon + 1);
    const std::int32_t field = platform::equalsIgnoringCase(key, "path") ? modDictation::wholePath
                                                                         : readField(key, "sort");
    const bool isDirection = direction == "asc" || direction == "desc";
    if (field != modDictation::noField && !isDirection)
        complain("cannot sort by \"" + text + "\"; say " + key + ", " + key + ":asc or " + key +
                 ":desc");
    keys.push_back({field, direction == "desc"});
    return field != modDictation::noField && isDirection;
}

bool readSort(const std::vector<std::string>& texts, std::vector<modDictation::SortKey>& keys) {
    return std::ranges::all_of(texts, [&keys](const std::string& text) {
        return readSortKey(std::string(platform::trimmed(text)), keys);
    });
}

bool findRoot(const TypedWords& typed, bool asksStore, std::string& root) {
    using namespace modFilePath;
    root = typed.root ? AddBackslash(platform::fromNativePath(*typed.root))
                      : GetDirectory(directory_id::dictationTree);
    if (root.empty()) {
        complain("no folder was given and the settings name none; give one, or set DictationDir in "
                 "section [Directories] of OVSearch.cfg");
        tellTakenWords(typed);
        return false;
    }
    const platform::Status opened =
        asksStore ? platform::DirectoryReader().open(root) : platform::Status();
    if (opened.ok())
        return true;
    if (typed.root && platform::fileExists(platform::fromNativePath(*typed.root)))
        complain(*typed.root +
                 ": is a file, and no folder to search; \"ovsearch show\" takes its name apart");
    else
        complain(opened.description() +
                 (typed.root
                      ? ""
                      : "; that is the store of the settings, DictationDir in OVSearch.cfg"));
    tellTakenWords(typed);
    return false;
}

void showProgress(const Session& session, const SearchReport& soFar, TerminalInterface& terminal) {
    terminal.showProgress(counted(soFar.filesTested, "dictation", "dictations") + ", " +
                          counted(soFar.hits, "hit", "hits") + ", in " +
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

std::int32_t readField(const std::string& key, const std::string& what) {
    const std::int32_t field = fieldOfKey(key);
    const std::string path = what == "sort" ? "path, " : "";
    if (field == modDictation::noField)
        complain("cannot " + what + " by \"" + key + '"' +
                 didYouMean(key, columnKeys(), "; a KEY is one of: " + path + fieldKeys()));
    return field;
}

ExitCode readSearch(const SearchOptions& options, const std::vector<std::string>& usualColumns,
                    SearchRequest& request) {
    modDictation::Search& search = request.search;
    if (options.criteriaFile)
        if (const ExitCode read =
                readCriteriaFile(*options.criteriaFile, options.telling.strict, search);
            read != ExitCode::found)
            return read;
    const TypedWords typed = findRootAmong(options.words, options.root);
    search.all = search.all && !options.any;
    if (!hasOneFolder(typed) || !addCriteria(typed, search) ||
        !readColumns(options.columns.empty() ? usualColumns : options.columns, request.columns) ||
        !readSort(options.sort, request.sort))
        return ExitCode::usage;
    if (!findRoot(typed, options.asksStore, search.root))
        return ExitCode::unreadable;
    search.all = search.all || search.criteria.empty();
    search.depth = options.maxDepth;
    request.limit = {options.limit.value_or(modDictation::usualLimit), options.limit.has_value()};
    search.limit = request.sort.empty() ? request.limit.count : noLimit;
    request.telling = options.telling;
    request.foldersAsTexts = typed.foldersAsTexts;
    return ExitCode::found;
}

SearchReport search(const modDictation::Search& what, const Session& session,
                    TerminalInterface& terminal, DictationList& hits,
                    const std::function<bool()>& goOn, modDictation::SearchMeans means) {
    constexpr std::int64_t progressIntervalMs = 100;
    std::int64_t nextProgress = platform::coarseMilliseconds() + progressIntervalMs;
    std::stop_source stop;
    means.stop = stop.get_token();
    means.watch = [&](const SearchReport& soFar) {
        if (!goOn() || TerminalInterface::interrupted())
            stop.request_stop();
        if (platform::coarseMilliseconds() < nextProgress)
            return;
        nextProgress = platform::coarseMilliseconds() + progressIntervalMs;
        showProgress(session, soFar, terminal);
    };
    SearchReport report = modDictation::search(what, hits, means);
    terminal.clearProgress();
    return report;
}

} // namespace ov::cli
