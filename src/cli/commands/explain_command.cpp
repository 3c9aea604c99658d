// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "cli/commands/explain_command.h"

#include "cli/output.h"
#include "cli/shown_text.h"
#include "cli/terminal_interface.h"
#include "cli/told_report.h"
#include "dictation/typed/explained_criterion.h"
#include "platform/files.h"

#include <map>
#include <string>
#include <vector>

namespace ov::cli {

namespace {

using modDictation::Criterion;
using modDictation::Search;
using modDictation::SearchReport;

std::string headingOf(const Search& search, std::int64_t tested) {
    const std::string where = " in " + shownText(platform::toNativePath(search.root));
    if (search.criteria.empty())
        return "Every dictation" + where + ": " + modDictation::countOfAll(tested, tested) + "\n";
    return (search.all ? "All of these," : "Any one of these,") + where + ":\n";
}

// Those that are met by names without a value which is shown all the same, by the places of the
// criteria that ask for that value.
std::map<std::size_t, Criterion> criteriaOfAssumed(const Search& search) {
    std::map<std::size_t, Criterion> all;
    for (std::size_t i = 0; i < search.criteria.size(); ++i)
        if (auto criterion = modDictation::criterionOfAssumed(search.criteria[i]))
            all.emplace(i, *std::move(criterion));
    return all;
}

// Counts without keeping hits: each criterion is tested while all are wanted, and nothing ever
// meets the last.
SearchReport count(Search search, const Session& session, TerminalInterface& terminal) {
    constexpr std::int32_t neverMet = 0; // no operator
    for (const auto& [place, criterion] : criteriaOfAssumed(search))
        search.criteria.push_back(criterion);
    search.criteria.push_back({modDictation::noField, neverMet, {}, {}});
    search.all = true;
    modDictation::DictationList none;
    return cli::search(search, session, terminal, none, [] { return true; });
}

std::string counted(const SearchReport& report, std::size_t place) {
    return place < report.matched.size()
               ? modDictation::countOfAll(report.matched[place], report.filesTested)
               : std::string();
}

void print(const Search& search, const SearchReport& report, Output& output) {
    const platform::DateTime now = platform::now();
    std::vector<Row> rows;
    for (std::size_t i = 0; i < search.criteria.size(); ++i)
        rows.push_back({"  " + shownText(modDictation::explainedCriterion(search.criteria[i],
                                                                          search.all, now)),
                        counted(report, i)});
    output.write(headingOf(search, report.filesTested));
    const std::vector<std::size_t> widths = columnWidths(rows);
    const auto assumed = criteriaOfAssumed(search);
    std::size_t place = rows.size(); // of what was counted beside them
    for (std::size_t i = 0; i < rows.size(); ++i) {
        output.write(tableLine(rows[i], widths));
        if (assumed.contains(i))
            output.write("      " +
                         modDictation::assumedNote(search.criteria[i], counted(report, place++)) +
                         "\n");
    }
}

} // namespace

ExitCode runExplain(std::span<const SearchRequest> requests, const Session& session,
                    TerminalInterface& terminal) {
    Output output(stdout);
    ExitCode result = ExitCode::found;
    for (const SearchRequest& request : requests) {
        const SearchReport report = count(request.search, session, terminal);
        print(request.search, report, output);
        tellReport(report, 0, request.telling);
        if (searchResult(report, 0, request.telling) == ExitCode::unreadable)
            result = ExitCode::unreadable;
        if (TerminalInterface::interrupted() || output.failed())
            break;
    }
    return output.finish(TerminalInterface::interrupted() ? ExitCode::interrupted : result);
}

} // namespace ov::cli
