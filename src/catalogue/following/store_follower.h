// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "catalogue/catalogue.h"
#include "catalogue/store_update.h"
#include "platform/terminal/folder_watch.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace ov::catalogue {

struct FollowMeans {
    UpdateMeans update; // of which `changes` and `entered` are set anew
    std::chrono::seconds interval{600};
    std::function<void()> idle = {}; // once a second at least, between updates
    // After each update; one that others keep from beginning is told only once that lasts.
    std::function<void(const UpdateReport&)> updated = {};
    // Told once, why the system is not told of all that changes.
    std::function<void(const platform::Status&)> restricted = {};
};

// Keeps what a catalogue has of a store up to date. The system tells which folders have changed,
// and only these are looked at, within a second or so. From time to time, and whenever the system
// may have missed something, all of the store is: as an update does that begins anew. The catalogue
// is open during updates only, so that others may update it in between; who comes second waits,
// also at the beginning.
class StoreFollower {
public:
    using Opening = std::function<std::unique_ptr<Catalogue>(platform::Status&)>;

    // `root` is a directory text.
    StoreFollower(Opening open, std::string root, FollowMeans means);

    // Until it is stopped, or the first update fails: that one's or the last one's report. Later
    // updates that fail are tried again.
    UpdateReport run();

private:
    using Clock = std::chrono::steady_clock;

    UpdateReport update();
    UpdateReport updateWith(const UpdateMeans& means) const;
    void letOthers(ToldChanges& changes, Clock::time_point begun);
    void plan(const UpdateReport& report, bool wasWhole, Clock::duration took);
    void watch(const std::string& directory);
    void wait();
    void take(const platform::FolderEvent& event);
    Clock::time_point next() const;

    const Opening open_;
    const std::string root_;
    const FollowMeans means_;
    platform::FolderWatch watch_{platform::FolderWatch::Wanted::names};
    ToldChanges changes_;        // not yet looked at
    std::int64_t toldUntil_ = 0; // nanoseconds since 1970
    bool isToldOfAll_ = true;    // by the system
    bool isBehind_ = true;       // only a look at all of the store will do
    Clock::time_point nextWhole_;
    Clock::time_point nextPart_ = Clock::time_point::max();
    Clock::time_point busySince_ = Clock::time_point::max();
    Clock::time_point rest_; // nothing is done before
};

} // namespace ov::catalogue
