// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "cli/watch/arrivals.h"

#include "platform/threads/coarse_clock.h"

#include <vector>

namespace ov::cli {

void Arrivals::take(const modDictation::Dictation& hit) {
    std::string path = pathOf(hit);
    if (isFirstSearch_)
        arrived(path);
    else if (!handedOn_.contains(path) && !begun_.contains(path))
        growing_.try_emplace(path,
                             Growing{platform::fileStamp(path), platform::coarseMilliseconds()});
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
    begun_.insert(path);
    growing_.erase(path);
}

void Arrivals::arrived(const std::string& path) {
    begun_.erase(path);
    growing_.erase(path);
    if (handedOn_.insert(path).second)
        PassingHits::take(modDictation::dictationOfPath(path));
}

void Arrivals::gone(const std::string& path) {
    handedOn_.erase(path);
    begun_.erase(path);
    growing_.erase(path);
}

void Arrivals::lookAgain() {
    const std::int64_t now = platform::coarseMilliseconds();
    std::vector<std::string> complete;
    for (auto& [path, growing] : growing_) {
        const platform::FileStamp stamp = platform::fileStamp(path);
        if (stamp != growing.stamp)
            growing = {stamp, now};
        else if (now - growing.since >= settledAfterMs)
            complete.push_back(path);
    }
    for (const std::string& path : complete)
        platform::fileExists(path) ? arrived(path) : gone(path);
}

} // namespace ov::cli
