// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "cli/commands/find_command.h"

#include "cli/commands/catalogue_update.h"
#include "cli/commands/explain_command.h"
#include "cli/commands/find_consumer.h"
#include "cli/hits/hit_search.h"
#include "cli/messages.h"
#include "cli/options/typed_words.h"
#include "cli/watch/store_watch.h"
#include "platform/files.h"

#include <algorithm>
#include <cstdio>
#include <memory>
#include <utility>
#include <vector>

namespace ov::cli {

namespace {

// A table has to fit a terminal; the others take all that the user has chosen to see.
std::vector<std::string> usualColumns(HitFormat format) {
    if (format == HitFormat::table)
        return {"folder", "status", "priority", "author", "dictated", "length", "subject"};
    std::vector<std::string> keys = chosenColumns();
    keys.insert(keys.begin(), "path");
    return keys;
}

ExitCode readMoment(const std::string& native, std::vector<SearchRequest>& requests) {
    platform::FileStamp stamp;
    const auto read = platform::readFileStamp(platform::fromNativePath(native), stamp);
    if (!read.ok())
        complain("--newer: " + read.description());
    for (SearchRequest& request : requests)
        request.newerThan = stamp.modified;
    return read.ok() ? ExitCode::found : ExitCode::unreadable;
}

// A request for each file of criteria; all are read before anything is searched.
ExitCode readRequests(const FindOptions& options, std::vector<SearchRequest>& requests) {
    SearchOptions search = options.search;
    search.asksStore = !options.catalogue;
    ExitCode read = ExitCode::found;
    const std::size_t count = std::max<std::size_t>(options.criteriaFiles.size(), 1);
    for (std::size_t i = 0; i < count && read == ExitCode::found; ++i) {
        if (!options.criteriaFiles.empty())
            search.criteriaFile = options.criteriaFiles[i];
        read = readSearch(search, usualColumns(formatOf(options)), requests.emplace_back());
    }
    if (read == ExitCode::found && options.newer)
        read = readMoment(*options.newer, requests);
    return read;
}

// Where folders are looked at more than once.
std::shared_ptr<modDictation::RememberedStore> rememberedFor(const FindOptions& options) {
    const modDictation::RememberedStore::Rules rules{.trustsUnknown = options.trustsFolderTimes};
    return options.watch || options.criteriaFiles.size() > 1
               ? std::make_shared<modDictation::RememberedStore>(rules)
               : nullptr;
}

std::int32_t countOf(const modDictation::SearchReport& report) {
    return static_cast<std::int32_t>(std::min<std::int64_t>(report.hits, noLimit));
}

void tellReports(const std::vector<modDictation::SearchReport>& reports, const Telling& telling) {
    for (const modDictation::SearchReport& report : reports)
        tellReport(report, countOf(report), telling);
}

// Found is what one of them found, unless one of them ended badly.
ExitCode resultOfAll(const std::vector<modDictation::SearchReport>& reports,
                     const Telling& telling) {
    ExitCode result = ExitCode::nothingFound;
    for (const modDictation::SearchReport& report : reports) {
        const ExitCode code = searchResult(report, countOf(report), telling);
        if (code == ExitCode::unreadable)
            return code;
        result = std::min(result, code);
    }
    return result;
}

// One search after the other.
std::vector<modDictation::SearchReport> findAll(const std::vector<SearchRequest>& requests,
                                                const HitSearch& with) {
    std::vector<modDictation::SearchReport> reports;
    with.consumer.begin();
    for (const SearchRequest& request : requests) {
        if (TerminalInterface::interrupted() || with.consumer.isFull())
            break;
        reports.push_back(searchFor(request.search, with));
    }
    with.consumer.end();
    return reports;
}

ExitCode watchOne(const SearchRequest& request, const HitSearch& with, const Telling& telling,
                  std::unique_ptr<HitConsumer> consumer) {
    Arrivals arrivals(std::move(consumer), request.newerThan);
    arrivals.begin();
    const ExitCode result =
        StoreWatch(request.search, {with.session, with.terminal, arrivals, with.remembered},
                   arrivals, telling)
            .run();
    arrivals.end();
    return arrivals.result(result);
}

} // namespace

ExitCode runFind(const FindOptions& options, const Session& session, TerminalInterface& terminal) {
    if (const std::string wrong = contradiction(options); !wrong.empty()) {
        complain(wrong);
        return ExitCode::usage;
    }
    std::vector<SearchRequest> requests;
    if (const ExitCode read = readRequests(options, requests); read != ExitCode::found)
        return read;
    if (options.explains)
        return runExplain(requests, options.looks, session, terminal);
    Output output(stdout);
    output.setBefore([&terminal] { terminal.makeRoomForOutput(); });
    auto consumer = consumerFor(options, requests, output, terminal);
    if (consumer == nullptr)
        return ExitCode::usage;
    AskedCatalogue catalogue;
    if (options.catalogue)
        if (const auto opened = catalogue.open(*options.catalogue); !opened.ok())
            return refuse(opened);
    AskedCatalogue* const asked = options.catalogue ? &catalogue : nullptr;
    const HitSearch with{session, terminal, *consumer, rememberedFor(options), {}, asked};
    ExitCode result = ExitCode::found;
    const Telling& telling = options.search.telling;
    std::vector<modDictation::SearchReport> reports;
    if (options.watch) {
        result = watchOne(requests.front(), with, telling, std::move(consumer));
    } else {
        reports = findAll(requests, with);
        result = consumer->result(resultOfAll(reports, telling));
    }
    // Told below what was printed, and not while a pager shows it.
    result = output.finish(TerminalInterface::interrupted() ? ExitCode::interrupted : result);
    tellReports(reports, telling);
    if (telling.messages && !options.quiet && !catalogue.asOf().empty())
        complain(catalogue.asOf());
    if (result == ExitCode::nothingFound)
        tellFoldersAsTexts(requests.front().foldersAsTexts);
    return result;
}

} // namespace ov::cli
