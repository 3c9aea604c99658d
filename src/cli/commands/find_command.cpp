// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "cli/commands/find_command.h"

#include "cli/commands/explain_command.h"
#include "cli/messages.h"
#include "cli/terminal_interface.h"
#include "cli/told_report.h"
#include "dictation/search/result_order.h"
#include "platform/terminal.h"

#include <algorithm>
#include <cstdio>
#include <memory>
#include <utility>
#include <vector>

namespace ov::cli {

namespace {

using modDictation::DictationList;

// A table has to fit a terminal; the others take all that the user has chosen to see.
std::vector<std::string> usualColumns(HitFormat format) {
    if (format == HitFormat::table)
        return {"folder", "status", "priority", "author", "dictated", "length", "subject"};
    std::vector<std::string> keys = chosenColumns();
    keys.insert(keys.begin(), "path");
    return keys;
}

HitFormat formatOf(const FindOptions& options) {
    return options.format.value_or(options.zeroEnded ? HitFormat::paths : HitFormat::table);
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
    void print(std::int32_t index) { writer_.write(hits_[index]); }

    const DictationList& hits_;
    HitWriter& writer_;
    Output& output_;
    std::int32_t printed_ = 0;
};

class SilentWriter final : public HitWriter {
public:
    void write(const modDictation::Dictation& /*dictation*/) override {}
};

// One hit tells the exit code, unless it depends on what is met after it.
bool isFirstEnough(const FindOptions& options) {
    return options.quiet && !options.search.telling.strict;
}

// A request for each file of criteria; all are read before anything is searched.
ExitCode readRequests(const FindOptions& options, std::vector<SearchRequest>& requests) {
    SearchOptions search = options.search;
    ExitCode read = ExitCode::found;
    const std::size_t count = std::max<std::size_t>(options.criteriaFiles.size(), 1);
    for (std::size_t i = 0; i < count && read == ExitCode::found; ++i) {
        if (!options.criteriaFiles.empty())
            search.criteriaFile = options.criteriaFiles[i];
        read = readSearch(search, usualColumns(formatOf(options)), requests.emplace_back());
        if (isFirstEnough(options))
            requests.back().search.limit = 1;
    }
    return read;
}

std::unique_ptr<HitWriter> writerFor(const FindOptions& options,
                                     const std::vector<SearchRequest>& requests, Output& output) {
    if (options.quiet)
        return std::make_unique<SilentWriter>();
    WriterOptions how{formatOf(options), requests[0].columns, options.separator.value_or(','),
                      options.raw, platform::isTerminal(stdout), options.zeroEnded};
    if (formatOf(options) == HitFormat::table) {
        how.looks = looksOf(options.looks);
        output.setPager(pagerFor(options.looks.pager));
    }
    for (const SearchRequest& request : requests)
        how.marks.add(request.search.criteria);
    return makeHitWriter(how, output);
}

struct Finding {
    const Session& session;
    TerminalInterface& terminal;
    HitWriter& writer;
    Output& output;
    std::shared_ptr<modDictation::RememberedStore> remembered;
    const FindOptions& options;
};

struct Found {
    modDictation::SearchReport report;
    std::int32_t hits = 0;
};

Found findOne(const SearchRequest& request, const Finding& with) {
    DictationList hits;
    HitPrinter printer(hits, with.writer, with.output);
    auto report = search(
        request.search, with.session, with.terminal, hits,
        [&] {
            if (!request.sort && printer.hasNew())
                printer.printNew();
            return !with.output.failed();
        },
        with.remembered);
    if (request.sort)
        printer.printSorted(*request.sort);
    else
        printer.printNew();
    report.limitReached = report.limitReached && !isFirstEnough(with.options);
    return {std::move(report), hits.size()};
}

// Found is what one of them found, unless one of them ended badly.
ExitCode resultOfAll(const std::vector<Found>& all, const Telling& telling) {
    ExitCode result = ExitCode::nothingFound;
    for (const Found& one : all) {
        const ExitCode code = searchResult(one.report, one.hits, telling);
        if (code == ExitCode::unreadable)
            return code;
        result = std::min(result, code);
    }
    return result;
}

} // namespace

ExitCode runFind(const FindOptions& options, const Session& session, TerminalInterface& terminal) {
    const HitFormat format = formatOf(options);
    if (options.zeroEnded && format != HitFormat::paths) {
        complain("-0 goes with --format paths");
        return ExitCode::usage;
    }
    if (options.separator && format != HitFormat::csv) {
        complain("--separator goes with --format csv");
        return ExitCode::usage;
    }
    if (options.raw && format != HitFormat::csv) {
        complain("--raw goes with --format csv");
        return ExitCode::usage;
    }
    std::vector<SearchRequest> requests;
    if (const ExitCode read = readRequests(options, requests); read != ExitCode::found)
        return read;
    if (options.explains)
        return runExplain(requests, session, terminal);
    Output output(stdout);
    output.setBefore([&terminal] { terminal.makeRoomForOutput(); });
    const auto writer = writerFor(options, requests, output);
    const modDictation::RememberedStore::Rules rules{.trustsUnknown = options.trustsFolderTimes};
    const auto remembered =
        requests.size() > 1 ? std::make_shared<modDictation::RememberedStore>(rules) : nullptr;
    std::vector<Found> all;
    writer->begin();
    for (const SearchRequest& request : requests) {
        if (TerminalInterface::interrupted() || output.failed())
            break;
        all.push_back(findOne(request, {session, terminal, *writer, output, remembered, options}));
    }
    writer->end();
    // Told below what was printed, and not while a pager shows it.
    const Telling& telling = options.search.telling;
    const ExitCode code = output.finish(
        TerminalInterface::interrupted() ? ExitCode::interrupted : resultOfAll(all, telling));
    for (const Found& one : all)
        tellReport(one.report, one.hits, telling);
    return code;
}

} // namespace ov::cli
