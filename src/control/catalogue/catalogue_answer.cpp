// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "control/catalogue/catalogue_answer.h"

#include "catalogue/catalogue_search.h"
#include "platform/files.h"
#include "platform/threads/errand.h"
#include "support/language/catalogue_text_ids.h"

#include <atomic>
#include <chrono>
#include <utility>

namespace ov {

using Kind = CatalogueAnswer::Kind;
using platform::Status;

namespace {

using Found = std::atomic<std::int32_t>;

// On a thread of its own.
CatalogueAnswer ask(const std::string& place, const modDictation::Search& what,
                    const std::stop_token& stop, Found& found) {
    CatalogueAnswer answer;
    answer.hits = std::make_unique<modDictation::DictationList>();
    const auto opened = openFor(place, what.root, answer);
    if (!answer.store)
        return answer;
    const modDictation::SearchMeans means{
        .stop = stop,
        .watch = [&](const modDictation::SearchReport&) { found = answer.hits->size(); }};
    const Status asked =
        catalogue::search(*opened, *answer.store, what, *answer.hits, means, answer.report);
    if (!asked.ok()) {
        const bool lacks = asked.kind() == Status::Kind::missing;
        answer.kind = lacks ? Kind::lacksFolder : Kind::unreachable;
        answer.why = lacks ? platform::toNativePath(what.root) : asked.description();
    }
    return answer;
}

CatalogueAnswer stoppedAnswer() {
    CatalogueAnswer answer;
    answer.hits = std::make_unique<modDictation::DictationList>();
    answer.report.stopped = true;
    return answer;
}

} // namespace

modUtil::Message CatalogueAnswer::problem() const {
    return {kind == Kind::missing       ? text_id::catalogueMissing
            : kind == Kind::lacksFolder ? text_id::catalogueLacksFolder
                                        : text_id::catalogueUnreachable,
            {why}};
}

modUtil::Message CatalogueAnswer::question() const {
    return {kind == Kind::missing       ? text_id::walkAsMissing
            : kind == Kind::lacksFolder ? text_id::walkAsFolderLacks
                                        : text_id::walkAsUnreachable,
            {why}};
}

std::unique_ptr<catalogue::Catalogue> openFor(const std::string& place, const std::string& folder,
                                              CatalogueAnswer& answer) {
    Status status;
    auto opened = catalogue::openCatalogue(place, catalogue::Access::ask, status);
    if (!opened) {
        const bool isMissing = !catalogue::isServer(place) && !platform::fileExists(place);
        answer.kind = isMissing ? Kind::missing : Kind::unreachable;
        answer.why = isMissing ? platform::toNativePath(place) : status.description();
        return nullptr;
    }
    answer.store = catalogue::storeOf(*opened, folder, status);
    if (!answer.store) {
        const bool lacks = status.kind() == Status::Kind::missing;
        answer.kind = lacks ? Kind::lacksFolder : Kind::unreachable;
        answer.why = lacks ? platform::toNativePath(folder) : status.description();
    }
    return opened;
}

CatalogueAnswer askPumping(const std::string& place, const modDictation::Search& what,
                           const CatalogueWait& wait) {
    using Clock = std::chrono::steady_clock;
    constexpr std::chrono::milliseconds step{5};
    const auto found = std::make_shared<Found>(0);
    platform::Errand<CatalogueAnswer> errand(
        [=, stop = wait.stop, locale = platform::locale()]() mutable {
            platform::setLocale(std::move(locale)); // for what dates mean
            return ask(place, what, stop, *found);
        });
    std::optional<Clock::time_point> leaves;
    while (!errand.wait(step)) {
        platform::userInterface().processMessages();
        if (wait.isEnding())
            return stoppedAnswer();
        if (wait.watch)
            wait.watch(*found);
        if (!wait.stop.stop_requested())
            continue;
        if (!leaves)
            leaves = Clock::now() + platform::patience;
        else if (Clock::now() > *leaves)
            return stoppedAnswer();
    }
    return errand.take();
}

std::string cataloguePlace(const std::string& named) {
    if (named == "own")
        return catalogue::usualPlace();
    const bool isNative = !catalogue::isServer(named) && named.find('/') != std::string::npos;
    return isNative ? platform::fromNativePath(named) : named;
}

std::string momentText(std::int64_t nanoseconds, const platform::DateTime& now) {
    const platform::DateTime then = platform::localTime(nanoseconds);
    const bool isToday = then.year == now.year && then.month == now.month && then.day == now.day;
    const std::string clock = platform::formatShortTime(then);
    return isToday ? clock : platform::formatShortDate(then) + " " + clock;
}

} // namespace ov
