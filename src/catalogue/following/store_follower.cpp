// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "catalogue/following/store_follower.h"

#include "dictation/dictation_record.h"
#include "platform/files.h"

#include <algorithm>
#include <system_error>
#include <utility>

namespace ov::catalogue {

using platform::FolderEvent;
using platform::FolderWatch;
using platform::Status;

namespace {

constexpr std::chrono::seconds longestUntold{5}; // that somebody else updates

bool isBusy(const UpdateReport& report) {
    return report.status.number() == static_cast<int>(std::errc::device_or_resource_busy);
}

} // namespace

StoreFollower::StoreFollower(Opening open, std::string root, FollowMeans means)
    : open_(std::move(open)), root_(std::move(root)), means_(std::move(means)) {}

UpdateReport StoreFollower::run() {
    UpdateReport first = update();
    while ((first.status.ok() || isBusy(first)) && !means_.update.stop.stop_requested()) {
        wait();
        if (Clock::now() < next())
            continue;
        if (UpdateReport report = update(); isBusy(first))
            first = std::move(report);
    }
    first.stopped = first.stopped || means_.update.stop.stop_requested();
    if (isBusy(first) && first.stopped)
        first.status = {};
    return first;
}

UpdateReport StoreFollower::update() {
    const Clock::time_point begun = Clock::now();
    const bool isWhole = isBehind_ || begun >= nextWhole_;
    ToldChanges changes = std::exchange(changes_, {});
    if (isToldOfAll_)
        changes.allUntil = toldUntil_;
    UpdateMeans means = means_.update;
    means.changes = isWhole ? nullptr : &changes;
    means.entered = [this](const std::string& directory) { watch(directory); };
    UpdateReport report = updateWith(means);
    if (isBusy(report))
        letOthers(changes, begun);
    else
        plan(report, isWhole, Clock::now() - begun);
    if (means_.updated && (!isBusy(report) || begun >= busySince_ + longestUntold))
        means_.updated(report);
    return report;
}

UpdateReport StoreFollower::updateWith(const UpdateMeans& means) const {
    UpdateReport report;
    const auto catalogue = open_(report.status);
    return catalogue ? updateStore(*catalogue, root_, means) : report;
}

// Another one updates the catalogue, perhaps another store in it; nothing was done, and what is to
// be done stays so.
void StoreFollower::letOthers(ToldChanges& changes, Clock::time_point begun) {
    constexpr std::chrono::seconds soon{1};
    changes_.folders.merge(changes.folders);
    busySince_ = std::min(busySince_, begun);
    rest_ = Clock::now() + soon;
}

// At most half of the time goes by in updates.
void StoreFollower::plan(const UpdateReport& report, bool wasWhole, Clock::duration took) {
    constexpr std::chrono::seconds later{60}; // a server may be away for long
    const Clock::time_point now = Clock::now();
    busySince_ = Clock::time_point::max();
    isBehind_ = !report.status.ok() || report.stopped;
    rest_ = now + took;
    nextPart_ = changes_.folders.empty() ? Clock::time_point::max() : now;
    if (!report.status.ok())
        nextWhole_ = now + std::min(means_.interval, later);
    else if (wasWhole)
        nextWhole_ = now + means_.interval;
}

// What happened in it before it was watched is not told.
void StoreFollower::watch(const std::string& directory) {
    Status why;
    switch (watch_.add(directory, why)) {
    case FolderWatch::Added::now:
        changes_.folders.insert(directory);
        return;
    case FolderWatch::Added::before:
    case FolderWatch::Added::gone:
        return;
    case FolderWatch::Added::elsewhere:
        why = {static_cast<int>(std::errc::not_supported), platform::toNativePath(directory),
               "the system is not told of all that changes there"};
        break;
    case FolderWatch::Added::refused:
        break;
    }
    if (std::exchange(isToldOfAll_, false) && means_.restricted)
        means_.restricted(why);
}

StoreFollower::Clock::time_point StoreFollower::next() const {
    return std::max(rest_, isBehind_ ? nextWhole_ : std::min(nextWhole_, nextPart_));
}

void StoreFollower::wait() {
    constexpr std::chrono::milliseconds longest{1000};
    if (means_.idle)
        means_.idle();
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(
        std::max(next() - Clock::now(), Clock::duration()));
    auto patience = std::min(left, longest);
    for (;;) {
        const std::int64_t before = means_.update.clock().wall;
        const std::vector<FolderEvent> events = watch_.wait(patience);
        if (events.empty()) {
            toldUntil_ = before; // nothing was left then
            return;
        }
        for (const FolderEvent& event : events)
            take(event);
        patience = {};
    }
}

// Of files only those that a store has; what has gone may have been a folder.
void StoreFollower::take(const FolderEvent& event) {
    constexpr std::chrono::milliseconds together{200}; // mostly several names change
    const bool isFile =
        event.kind == FolderEvent::Kind::begun || event.kind == FolderEvent::Kind::arrived;
    if (event.kind == FolderEvent::Kind::lost)
        nextWhole_ = {};
    else if (!isFile || modDictation::hasDictationEnding(event.name)) {
        changes_.folders.insert(event.directory);
        nextPart_ = std::min(nextPart_, Clock::now() + together);
    }
}

} // namespace ov::catalogue
