// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "cli/watch/arrivals.h"

#include "platform/threads/coarse_clock.h"

#include <vector>

namespace ov::cli {

Arrivals::Growing Arrivals::growing(const std::string& path, bool isHit) {
    return {platform::fileStamp(path), platform::coarseMilliseconds(), isHit};
}

void Arrivals::take(const modDictation::Dictation& hit) {
    std::string path = pathOf(hit);
    if (isFirstSearch_)
        takeFirst(path);
    else if (!handedOn_.contains(path) && !growing_.contains(path) && !isTooOld(path))
        growing_.emplace(path, growing(path, true));
}

bool Arrivals::isTooOld(const std::string& path) const {
    const auto old = tooOld_.find(path);
    return old != tooOld_.end() && old->second == platform::fileStamp(path);
}

void Arrivals::takeFirst(const std::string& path) {
    const platform::FileStamp stamp =
        newerThan_ ? platform::fileStamp(path) : platform::FileStamp{};
    if (newerThan_ && stamp.modified <= *newerThan_)
        tooOld_.emplace(path, stamp);
    else
        arrived(path);
}

void Arrivals::endSearch(modDictation::SearchReport& /*report*/) {
    isFirstSearch_ = false;
}

void Arrivals::end() {
    modDictation::SearchReport report;
    PassingHits::endSearch(report);
    PassingHits::end();
}

void Arrivals::begun(const std::string& path) {
    growing_.insert_or_assign(path, growing(path, false));
}

void Arrivals::arrived(const std::string& path) {
    growing_.erase(path);
    tooOld_.erase(path);
    if (handedOn_.insert(path).second)
        PassingHits::take(modDictation::dictationOfPath(path));
}

void Arrivals::gone(const std::string& path) {
    handedOn_.erase(path);
    tooOld_.erase(path);
    growing_.erase(path);
}

void Arrivals::lost() {
    std::erase_if(growing_, [](const auto& each) { return !each.second.isHit; });
}

bool Arrivals::lookAgain() {
    const std::int64_t now = platform::coarseMilliseconds();
    std::vector<std::string> complete;
    for (auto& [path, growing] : growing_) {
        const platform::FileStamp stamp = platform::fileStamp(path);
        if (stamp != growing.stamp)
            growing = {stamp, now, growing.isHit};
        else if (now - growing.since >= growing.restMs())
            complete.push_back(path);
    }
    bool mayBeHits = false;
    for (const std::string& path : complete)
        if (!platform::fileExists(path))
            gone(path);
        else if (growing_.at(path).isHit)
            arrived(path);
        else
            mayBeHits = growing_.erase(path) > 0;
    return mayBeHits;
}

} // namespace ov::cli
