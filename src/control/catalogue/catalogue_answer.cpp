// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "control/catalogue/catalogue_answer.h"

#include "catalogue/catalogue_search.h"
#include "platform/files.h"
#include "platform/threads/errand.h"
#include "support/language/catalogue_text_ids.h"
#include "support/log.h"

#include <atomic>
#include <cerrno>
#include <chrono>
#include <utility>

namespace ov {

using Kind = CatalogueAnswer::Kind;
using platform::Status;

namespace {

using Found = std::atomic<std::int32_t>;

// Of a catalogue that is there.
void setFailure(CatalogueAnswer& answer, const std::string& place, const std::string& folder,
                const Status& why) {
    const bool lacks = why.kind() == Status::Kind::missing;
    answer.kind = lacks ? Kind::lacksFolder : Kind::unreachable;
    answer.what = lacks ? platform::toNativePath(folder) : catalogue::shownPlace(place);
    answer.status = why;
}

// In the user's language; all else of it stands in the log.
std::int32_t sentenceOf(const Status& why) {
    switch (why.number()) {
    case ENOTCONN:
    case ECONNRESET:
        return text_id::catalogueUnreachable;
    case EACCES:
    case EPERM:
    case EROFS:
        return text_id::catalogueRefused;
    case EPROTO:
        return text_id::catalogueOfOtherVersion;
    case EBUSY:
    case ECANCELED:
    case ENOMEM:
        return text_id::catalogueBusy;
    case EINVAL:
        return text_id::catalogueAddressWrong;
    case ENOEXEC:
        return text_id::catalogueModuleMissing;
    default:
        return text_id::catalogueDamaged;
    }
}

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
    if (!asked.ok())
        setFailure(answer, place, what.root, asked);
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
                                        : sentenceOf(status),
            {what}};
}

modUtil::Message CatalogueAnswer::question() const {
    return modUtil::Message::around(text_id::walkInstead, problem());
}

std::unique_ptr<catalogue::Catalogue> openFor(const std::string& place, const std::string& folder,
                                              CatalogueAnswer& answer) {
    Status status;
    auto opened = catalogue::openCatalogue(place, catalogue::Access::ask, status);
    if (!opened) {
        setFailure(answer, place, folder, status);
        if (status.kind() == Status::Kind::missing) { // an empty one is none either
            answer.kind = Kind::missing;
            answer.what = catalogue::shownPlace(place);
        }
        return nullptr;
    }
    answer.store = catalogue::storeOf(*opened, folder, status);
    if (!answer.store)
        setFailure(answer, place, folder, status);
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
    CatalogueAnswer answer = errand.take();
    if (answer.kind != Kind::answered && wait.stop.stop_requested())
        return stoppedAnswer(); // nobody wants to hear why any more
    if (answer.kind == Kind::unreachable)
        WriteErrorLog(answer.status, "AskCatalogue");
    return answer;
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
