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

StoreFollower::StoreFollower(Opening open, std::string root, FollowMeans means)
    : open_(std::move(open)), root_(std::move(root)), means_(std::move(means)) {}

UpdateReport StoreFollower::run() {
    UpdateReport report = update();
    while (report.status.ok() && !means_.update.stop.stop_requested()) {
        wait();
        if (Clock::now() >= next())
            static_cast<void>(update());
    }
    report.stopped = report.stopped || means_.update.stop.stop_requested();
    return report;
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
    plan(report, isWhole, Clock::now() - begun);
    if (means_.updated)
        means_.updated(report);
    return report;
}

UpdateReport StoreFollower::updateWith(const UpdateMeans& means) const {
    UpdateReport report;
    const auto catalogue = open_(report.status);
    return catalogue ? updateStore(*catalogue, root_, means) : report;
}

// At most half of the time goes by in updates.
void StoreFollower::plan(const UpdateReport& report, bool wasWhole, Clock::duration took) {
    constexpr std::chrono::seconds soon{1};
    constexpr std::chrono::seconds later{60}; // a server may be away for long
    const Clock::time_point now = Clock::now();
    const bool isBusy =
        report.status.number() == static_cast<int>(std::errc::device_or_resource_busy);
    isBehind_ = !report.status.ok() || report.stopped;
    rest_ = now + took;
    nextPart_ = changes_.folders.empty() ? Clock::time_point::max() : now;
    if (!report.status.ok())
        nextWhole_ = now + (isBusy ? soon : std::min(means_.interval, later));
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
