// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "cli/commands/explain_command.h"

#include "cli/looks/pager.h"
#include "cli/looks/wrapped_row.h"
#include "cli/output.h"
#include "cli/shown_text.h"
#include "cli/terminal_interface.h"
#include "cli/told_report.h"
#include "dictation/typed/explained_criterion.h"
#include "platform/files.h"
#include "support/language/modLanguage.h"
#include "support/language/text_ids.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace ov::cli {

namespace {

using modDictation::Criterion;
using modDictation::Search;
using modDictation::SearchReport;

std::string headingOf(const Search& search, std::int64_t tested) {
    using modLanguage::GetText;
    const std::string where = shownText(platform::toNativePath(search.root));
    if (search.criteria.empty())
        return GetText(text_id::explainedNone, {where, modDictation::countOfAll(tested, tested)}) +
               "\n";
    return GetText(search.all ? text_id::explainedAll : text_id::explainedAny, {where}) + "\n";
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

// What counts, of the store that is asked about.
struct Counter {
    const Session& session;
    TerminalInterface& terminal;
    std::shared_ptr<modDictation::RememberedStore> remembered =
        std::make_shared<modDictation::RememberedStore>(modDictation::RememberedStore::Rules{});

    // Keeps no hits.
    SearchReport count(const Search& search) const {
        modDictation::DictationList hits;
        const auto forget = [&hits] {
            hits.clear();
            return true;
        };
        return cli::search(search, session, terminal, hits, forget, {.remembered = remembered});
    }
};

// Each criterion is tested while all are wanted, and nothing ever meets the last.
SearchReport countEach(Search search, const Counter& counter) {
    constexpr std::int32_t neverMet = 0; // no operator
    for (const auto& [place, criterion] : criteriaOfAssumed(search))
        search.criteria.push_back(criterion);
    search.criteria.push_back({modDictation::noField, neverMet, {}, {}});
    search.all = true;
    return counter.count(search);
}

// Of dictations that meet the criteria together.
std::int64_t countTogether(Search search, std::span<const Criterion> criteria,
                           const Counter& counter) {
    search.criteria.assign(criteria.begin(), criteria.end());
    search.criteria.front().indented = false;
    search.limit = noLimit;
    return TerminalInterface::interrupted() ? 0 : counter.count(search).hits;
}

std::string counted(const SearchReport& report, std::size_t place) {
    return place < report.matched.size()
               ? modDictation::countOfAll(report.matched[place], report.filesTested)
               : std::string();
}

struct Explained {
    Row row;
    std::string note;
};

// A free word has one line for all its criteria.
std::vector<Explained> explained(const Search& search, const SearchReport& report,
                                 const Counter& counter) {
    const platform::DateTime now = platform::now();
    const auto assumed = criteriaOfAssumed(search);
    std::size_t place = search.criteria.size(); // of what was counted beside them
    std::vector<Explained> lines;
    for (std::size_t i = 0; i < search.criteria.size(); ++i) {
        const auto rest = std::span(search.criteria).subspan(i);
        const Criterion& criterion = rest.front();
        std::string text = modDictation::explainedCriterion(criterion, search.all, now);
        std::string count = counted(report, i);
        if (const std::size_t size = modDictation::freeWordLength(rest, search.all); size > 0) {
            text = modDictation::explainedFreeWord(criterion, search.all);
            count = modDictation::countOfAll(countTogether(search, rest.first(size), counter),
                                             report.filesTested);
            i += size - 1;
        }
        lines.push_back({{"  " + shownText(text), count}, {}});
        if (assumed.contains(i))
            lines.back().note = modDictation::assumedNote(criterion, counted(report, place++));
    }
    return lines;
}

// From a blank on it goes on below, further in.
std::vector<Row> rowsOf(const Row& row, std::optional<std::size_t> width) {
    constexpr std::size_t gap = 2;
    constexpr std::size_t fewest = 20;
    const std::string& text = row.front();
    const std::size_t indent = std::min(text.find_first_not_of(' '), text.size());
    const std::size_t taken = indent + gap + columnCount(row.back()) + gap;
    if (!width)
        return {row};
    std::vector<Row> rows;
    const std::size_t room = std::max(*width, taken + fewest) - taken;
    for (const std::string& part : wrappedText(std::string_view(text).substr(indent), room))
        rows.push_back(rows.empty() ? Row{std::string(indent, ' ') + part, row.back()}
                                    : Row{std::string(indent + gap, ' ') + part, {}});
    return rows;
}

void print(const Search& search, const SearchReport& report, const Counter& counter,
           std::optional<std::size_t> width, Output& output) {
    const std::vector<Explained> lines = explained(search, report, counter);
    std::vector<Row> all;
    for (const Explained& line : lines)
        std::ranges::copy(rowsOf(line.row, width), std::back_inserter(all));
    const std::vector<std::size_t> widths = columnWidths(all);
    output.write(headingOf(search, report.filesTested));
    for (const Explained& line : lines) {
        for (const Row& row : rowsOf(line.row, width))
            output.write(tableLine(row, widths));
        if (!line.note.empty())
            for (const Row& row : rowsOf({"      " + line.note, {}}, width))
                output.write(tableLine(row, {0, 0}));
    }
}

// What could not be read may hold what was looked for, unless something was found all the same.
ExitCode resultOf(const SearchRequest& request, const SearchReport& report,
                  const Counter& counter) {
    constexpr std::int32_t some = 1;
    const bool isFound = report.foldersUnreadable == 0 || counter.count(request.search).hits > 0;
    return searchResult(report, isFound ? some : 0, request.telling);
}

} // namespace

ExitCode runExplain(std::span<const SearchRequest> requests, const LookOptions& looks,
                    const Session& session, TerminalInterface& terminal) {
    Output output(stdout);
    output.setBefore([&terminal] { terminal.makeRoomForOutput(); });
    output.setPager(pagerFor(looks.pager));
    const Counter counter{session, terminal};
    ExitCode result = ExitCode::found;
    std::vector<SearchReport> reports;
    for (const SearchRequest& request : requests) {
        const SearchReport& report = reports.emplace_back(countEach(request.search, counter));
        print(request.search, report, counter, looksOf(looks).width, output);
        result = std::max(result, resultOf(request, report, counter));
        if (TerminalInterface::interrupted() || output.failed())
            break;
    }
    result = output.finish(TerminalInterface::interrupted() ? ExitCode::interrupted : result);
    for (const SearchReport& report : reports)
        tellReport(report, 0, requests.front().telling);
    return result;
}

} // namespace ov::cli
