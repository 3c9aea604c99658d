// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "cli/hits/hit_consumer.h"
#include "platform/files.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <unordered_set>

namespace ov::cli {

// Hands each hit on once, however often it is found: those of the first search at once, and later
// ones when they are complete, which is when somebody says so or when the file has stayed as it is
// for a while: a long one where it is said to be in the making. One that was gone in between may
// come again. Of what the first search finds, only files changed after a moment may be wanted; the
// others are new once they are written or moved in, whatever their times say.
class Arrivals final : public PassingHits {
public:
    static constexpr std::int64_t settledAfterMs = 2000;
    static constexpr std::int64_t abandonedAfterMs = 30000;

    // Nanoseconds as in platform::FileStamp.
    Arrivals(std::unique_ptr<HitConsumer> next, std::optional<std::int64_t> newerThan)
        : PassingHits(std::move(next)), newerThan_(newerThan) {}

    void take(const modDictation::Dictation& hit) override;
    // It goes no further: for whom the hits are, it is one search without an end.
    void endSearch(modDictation::SearchReport& report) override;
    void end() override;

    // Somebody will say when that path is complete, and whether it is a hit.
    void begun(const std::string& path);
    // A path that is a hit, and one that may have been.
    void arrived(const std::string& path);
    void gone(const std::string& path);
    // What is said of some was not heard: the next search will find them.
    void lost();

    // Hands on what has not changed for a while. True when a search is to find out whether
    // something of which nobody said more is a hit.
    bool lookAgain();
    bool isWaiting() const noexcept { return !growing_.empty(); }

private:
    struct Growing {
        platform::FileStamp stamp;
        std::int64_t since = 0; // coarse milliseconds
        bool isHit = false;     // as a search found
        std::int64_t restMs() const noexcept { return isHit ? settledAfterMs : abandonedAfterMs; }
    };
    static Growing growing(const std::string& path, bool isHit);
    void takeFirst(const std::string& path);
    bool isTooOld(const std::string& path) const;

    std::optional<std::int64_t> newerThan_;
    std::unordered_map<std::string, platform::FileStamp> tooOld_; // as they were at first

    std::unordered_set<std::string> handedOn_;
    std::unordered_map<std::string, Growing> growing_;
    bool isFirstSearch_ = true;
};

} // namespace ov::cli
