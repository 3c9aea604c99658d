// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "cli/hits/asked_catalogue.h"

#include "catalogue/catalogue_search.h"
#include "cli/search_request.h"
#include "cli/terminal_interface.h"
#include "platform/files.h"
#include "platform/locale.h"
#include "platform/threads/errand.h"

#include <array>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <stop_token>
#include <utility>

namespace ov::cli {

using modDictation::DictationList;
using modDictation::SearchReport;
using platform::Status;

namespace {

Status findHits(catalogue::Catalogue& catalogue, const catalogue::Store& store,
                const modDictation::Search& what, HitConsumer& consumer, SearchReport& report) {
    DictationList hits;
    std::stop_source stop;
    modDictation::SearchMeans means;
    means.stop = stop.get_token();
    means.watch = [&](const SearchReport&) {
        handOn(hits, consumer);
        if (consumer.isFull() || TerminalInterface::interrupted())
            stop.request_stop();
    };
    Status asked = catalogue::search(catalogue, store, what, hits, means, report);
    handOn(hits, consumer);
    return asked;
}

} // namespace

std::string cataloguePlace(const std::string& typed) {
    if (catalogue::isServer(typed))
        return typed;
    return typed == "own" ? catalogue::usualPlace() : platform::fromNativePath(typed);
}

std::unique_ptr<catalogue::Catalogue>
openUnlessInterrupted(const std::string& place, catalogue::Access access, Status& status) {
    constexpr std::chrono::milliseconds betweenLooks{50};
    struct Opened {
        std::unique_ptr<catalogue::Catalogue> catalogue;
        Status status;
    };
    platform::Errand<Opened> errand([place, access] {
        Opened opened;
        opened.catalogue = catalogue::openCatalogue(place, access, opened.status);
        return opened;
    });
    while (!errand.wait(betweenLooks))
        if (TerminalInterface::interrupted()) {
            status = {ECANCELED, catalogue::shownPlace(place), "was stopped"};
            return nullptr;
        }
    Opened opened = errand.take();
    status = std::move(opened.status);
    return std::move(opened.catalogue);
}

std::string momentText(std::int64_t nanoseconds) {
    const platform::DateTime time = platform::localTime(nanoseconds);
    std::array<char, 16> clock{};
    static_cast<void>(
        std::snprintf(clock.data(), clock.size(), " %02d:%02d", time.hour, time.minute));
    return platform::formatIsoDate(time) + clock.data();
}

std::string asOfText(const catalogue::Store& store) {
    if (store.asOf == 0)
        return "the first update of " + platform::toNativePath(store.root) +
               " has not come to its end; not all is there yet";
    std::string text = "as of " + momentText(store.asOf);
    if (store.begun != 0)
        text.append(", some of it newer: an update began at " + momentText(store.begun) +
                    " and has not come to its end");
    return text;
}

Status AskedCatalogue::ask(const modDictation::Search& what, HitConsumer& consumer,
                           SearchReport& report) {
    Status status;
    const auto store = catalogue::storeOf(*catalogue_, what.root, status);
    if (!store)
        return status;
    isWhole_ = store->asOf != 0;
    asOf_ = asOfText(*store);
    const auto countsBy = what.limit == noLimit ? consumer.countsBy() : std::nullopt;
    if (!countsBy)
        return findHits(*catalogue_, *store, what, consumer, report);
    std::stop_source stop;
    modDictation::SearchMeans means;
    means.stop = stop.get_token();
    means.watch = [&stop](const SearchReport&) {
        if (TerminalInterface::interrupted())
            stop.request_stop();
    };
    return catalogue::countHits(
        *catalogue_, *store, what, *countsBy,
        [&consumer](const modDictation::Dictation& one, std::int64_t count) {
            consumer.takeMany(one, count);
            return !TerminalInterface::interrupted();
        },
        report, means);
}

SearchReport AskedCatalogue::search(const modDictation::Search& what, HitConsumer& consumer) {
    SearchReport report;
    if (Status asked = ask(what, consumer, report); !asked.ok()) {
        report.rootVanished = true;
        report.problems.insert(report.problems.begin(), std::move(asked));
    }
    report.stopped = report.stopped || !isWhole_ || TerminalInterface::interrupted();
    consumer.endSearch(report);
    return report;
}

} // namespace ov::cli
