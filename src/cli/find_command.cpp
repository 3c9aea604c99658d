// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "cli/find_command.h"

#include <cstdio>
#include <optional>

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
#include "support/modLanguage.h"
#include "support/text_ids.h"

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
        complain(native + ": " + std::to_string(lines.skipped) +
                 " lines that are no criteria were left out");
    return true;
}

std::optional<Column> columnOfKey(const std::string& key) {
    if (key == "path")
        return Column{key, pathColumn};
    const std::int32_t field = modDictation::fieldIdOfKey(key);
    if (field <= modDictation::noField) {
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
        const auto column = columnOfKey(key);
        if (!column)
            return false;
        columns.push_back(*column);
    }
    return true;
}

bool readSort(const std::string& text, std::optional<SortOrder>& sort) {
    if (text.empty())
        return true;
    const std::size_t colon = text.find(':');
    const std::string direction = colon == std::string::npos ? "asc" : text.substr(colon + 1);
    const std::int32_t field = modDictation::fieldIdOfKey(text.substr(0, colon));
    if (field <= modDictation::noField || (direction != "asc" && direction != "desc")) {
        complain("cannot sort by \"" + text + "\"; say KEY or KEY:desc, with KEY one of: " +
                 fieldKeys());
        return false;
    }
    sort = SortOrder{field, direction == "desc"};
    return true;
}

std::string searchRoot(const std::string& typed) {
    using namespace modFilePath;
    return typed.empty() ? GetDirectory(directory_id::dictationTree)
                         : AddBackslash(platform::fromNativePath(typed));
}

bool checkRoot(const std::string& root) {
    if (root.empty())
        complain("no folder was given and the settings name none; give one, or set DictationDir in "
                 "section [Directories] of OVSearch.cfg");
    else if (!platform::directoryExists(root))
        complain(modLanguage::GetText(text_id::directoryMissing, {platform::toNativePath(root)}));
    else
        return true;
    return false;
}

// Writes hits as they come, or sorted once all are there.
class HitPrinter {
public:
    HitPrinter(const DictationList& hits, HitWriter& writer, Output& output)
        : hits_(hits), writer_(writer), output_(output) {}

    void printNew() {
        const std::int32_t before = printed_;
        while (printed_ < hits_.size())
            print(++printed_);
        if (printed_ != before)
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

void showProgress(const Session& session, const DictationList& hits,
                  TerminalInterface& terminal) {
    terminal.showProgress(std::to_string(modDictation::lastScanReport().filesTested) +
                          " dictations, " + std::to_string(hits.size()) + " hits, in " +
                          platform::toNativePath(session.host().currentFolder()));
}

void search(const FindOptions& options, const FindRequest& request, const Session& session,
            TerminalInterface& terminal, DictationList& hits, HitPrinter& printer, Output& output) {
    constexpr std::int64_t progressIntervalMs = 100;
    std::int64_t nextProgress = platform::coarseMilliseconds() + progressIntervalMs;
    terminal.setIdleHandler([&] {
        if (!request.sort)
            printer.printNew();
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

ExitCode result(const DictationList& hits, const Output& output) {
    if (output.failed()) {
        complain("cannot write: " + output.failure());
        return ExitCode::unreadable;
    }
    if (!hits.empty())
        return ExitCode::found;
    // What could not be read may hold what was looked for.
    const bool incomplete = modDictation::lastScanReport().foldersUnreadable > 0;
    return incomplete ? ExitCode::unreadable : ExitCode::nothingFound;
}

} // namespace

ExitCode runFind(const FindOptions& options, const Session& session, TerminalInterface& terminal) {
    FindRequest request;
    if (!readCriteria(options.criteria, request.criteria) ||
        !readColumns(options, request.columns) || !readSort(options.sort, request.sort))
        return ExitCode::usage;
    if (!options.criteriaFile.empty() && !readCriteriaFile(options.criteriaFile, request.criteria))
        return ExitCode::unreadable;
    request.root = searchRoot(options.root);
    if (!checkRoot(request.root))
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
    if (terminal.interrupted())
        complain("stopped; what was found until then is shown");
    return result(hits, output);
}

} // namespace ov::cli
