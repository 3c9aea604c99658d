// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "cli/commands/explain_command.h"

#include "cli/output.h"
#include "cli/shown_text.h"
#include "cli/terminal_interface.h"
#include "cli/told_report.h"
#include "dictation/typed/explained_criterion.h"
#include "platform/files.h"
#include "support/language/modLanguage.h"
#include "support/language/text_ids.h"

#include <map>
#include <memory>
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

void print(const Search& search, const SearchReport& report, const Counter& counter,
           Output& output) {
    const std::vector<Explained> lines = explained(search, report, counter);
    std::vector<Row> rows;
    for (const Explained& line : lines)
        rows.push_back(line.row);
    output.write(headingOf(search, report.filesTested));
    const std::vector<std::size_t> widths = columnWidths(rows);
    for (const Explained& line : lines) {
        output.write(tableLine(line.row, widths));
        if (!line.note.empty())
            output.write("      " + line.note + "\n");
    }
}

} // namespace

ExitCode runExplain(std::span<const SearchRequest> requests, const Session& session,
                    TerminalInterface& terminal) {
    Output output(stdout);
    const Counter counter{session, terminal};
    ExitCode result = ExitCode::found;
    for (const SearchRequest& request : requests) {
        const SearchReport report = countEach(request.search, counter);
        print(request.search, report, counter, output);
        tellReport(report, 0, request.telling);
        if (searchResult(report, 0, request.telling) == ExitCode::unreadable)
            result = ExitCode::unreadable;
        if (TerminalInterface::interrupted() || output.failed())
            break;
    }
    return output.finish(TerminalInterface::interrupted() ? ExitCode::interrupted : result);
}

} // namespace ov::cli
