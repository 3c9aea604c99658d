// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "cli/find_command.h"

#include "cli/criterion_text.h"
#include "cli/messages.h"
#include "cli/session.h"
#include "cli/terminal_interface.h"
#include "dictation/criterion.h"
#include "dictation/field_table.h"
#include "dictation/result_order.h"
#include "dictation/tree_scan.h"
#include "platform/coarse_clock.h"
#include "platform/files.h"
#include "platform/terminal.h"
#include "platform/text.h"
#include "support/modFilePath.h"

#include <cstdio>
#include <optional>

namespace ov::cli {

namespace {

using modDictation::DictationList;

struct SortOrder {
    std::int32_t field = 0;
    bool descending = false;
};

// The options once they have been understood.
struct FindRequest {
    std::string root;
    std::vector<std::string> criteria;
    std::vector<Column> columns;
    std::optional<SortOrder> sort;
};

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
        return Column{"path", pathColumn};
    const std::int32_t field = fieldOfKey(key);
    if (field == modDictation::noField) {
        complain("there is no column \"" + key + "\"; columns are: path, " + fieldKeys());
        return std::nullopt;
    }
    const std::string_view ownKey = modDictation::fieldDefinition(field).key;
    return Column{ownKey.empty() ? key : std::string(ownKey), field};
}

// A table has to fit a terminal; the others take all that the user has chosen to see.
std::vector<std::string> usualColumns(HitFormat format) {
    if (format == HitFormat::table)
        return {"folder", "status", "priority", "author", "dictated", "length", "subject"};
    std::vector<std::string> keys = {"path"};
    for (const modDictation::SearchField* field : modDictation::columnFields())
        if (field->Selectable)
            keys.emplace_back(modDictation::fieldDefinition(field->Id).key);
    return keys;
}

bool readColumns(const FindOptions& options, std::vector<Column>& columns) {
    for (const std::string& key :
         options.columns.empty() ? usualColumns(options.format) : options.columns) {
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

// What is wrong with how things were asked for.
bool readRequest(const FindOptions& options, FindRequest& request) {
    if (options.zeroEnded && options.format != HitFormat::paths) {
        complain("-0 goes with --format paths");
        return false;
    }
    return readCriteria(options.criteria, request.criteria) &&
           readColumns(options, request.columns) &&
           (!options.sort || readSort(*options.sort, request.sort));
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

// Writes hits as they come, or sorted once all are there.
class HitPrinter {
public:
    HitPrinter(const DictationList& hits, HitWriter& writer, Output& output)
        : hits_(hits), writer_(writer), output_(output) {}

    bool hasNew() const noexcept { return printed_ < hits_.size(); }

    void printNew() {
        while (hasNew())
            print(++printed_);
        output_.flush();
    }

    void printSorted(const SortOrder& sort) {
        for (const std::int32_t index :
             modDictation::sortedOrder(hits_, sort.field, sort.descending))
            print(index);
    }

private:
    void print(std::int32_t index) { writer_.write(hits_.directory(index), hits_.fileName(index)); }

    const DictationList& hits_;
    HitWriter& writer_;
    Output& output_;
    std::int32_t printed_ = 0;
};

void showProgress(const Session& session, const DictationList& hits, TerminalInterface& terminal) {
    terminal.showProgress(std::to_string(modDictation::lastScanReport().filesTested) +
                          " dictations, " + std::to_string(hits.size()) + " hits, in " +
                          platform::toNativePath(session.host().currentFolder()));
}

void search(const FindOptions& options, const FindRequest& request, const Session& session,
            TerminalInterface& terminal, DictationList& hits, HitPrinter& printer, Output& output) {
    constexpr std::int64_t progressIntervalMs = 100;
    std::int64_t nextProgress = platform::coarseMilliseconds() + progressIntervalMs;
    terminal.setIdleHandler([&] {
        if (!request.sort && printer.hasNew()) {
            terminal.makeRoomForOutput();
            printer.printNew();
        }
        if (output.failed())
            modDictation::requestSearchAbort();
        if (platform::coarseMilliseconds() < nextProgress)
            return;
        nextProgress = platform::coarseMilliseconds() + progressIntervalMs;
        showProgress(session, hits, terminal);
    });
    modDictation::SearchDictations(request.root, request.criteria, options.maxDepth, hits, true,
                                   !options.any || request.criteria.empty(), options.limit);
    terminal.setIdleHandler({});
    terminal.clearProgress();
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

void reportEnd(const FindOptions& options, const DictationList& hits) {
    if (TerminalInterface::interrupted() && modDictation::lastScanReport().stopped)
        complain("stopped; what was found until then is shown");
    else if (options.limit == usualLimit && hits.size() >= options.limit)
        complain("ended after " + std::to_string(hits.size()) +
                 " dictations; --limit allows for more");
}

ExitCode result(const DictationList& hits) {
    if (!hits.empty())
        return ExitCode::found;
    // What could not be read may hold what was looked for.
    const bool incomplete = modDictation::lastScanReport().foldersUnreadable > 0;
    return incomplete ? ExitCode::unreadable : ExitCode::nothingFound;
}

} // namespace

ExitCode runFind(const FindOptions& options, const Session& session, TerminalInterface& terminal) {
    FindRequest request;
    if (!readRequest(options, request))
        return ExitCode::usage;
    if ((options.criteriaFile && !readCriteriaFile(*options.criteriaFile, request.criteria)) ||
        !findRoot(options.root, request.root))
        return ExitCode::unreadable;

    Output output(stdout);
    const auto writer = makeHitWriter(
        {options.format, request.columns, platform::isTerminal(stdout), options.zeroEnded}, output);
    DictationList hits;
    HitPrinter printer(hits, *writer, output);
    writer->begin();
    search(options, request, session, terminal, hits, printer, output);
    if (request.sort)
        printer.printSorted(*request.sort);
    else
        printer.printNew();
    writer->end();
    output.flush();
    reportProblems();
    reportEnd(options, hits);
    return output.finish(result(hits));
}

} // namespace ov::cli
