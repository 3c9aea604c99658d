// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "cli/hits/hit_consumer.h"

#include <algorithm>
#include <cstdint>
#include <memory>

namespace ov::cli {

// Takes so many hits of a search and no more, where what is found is not yet what is taken: the
// limit of the search itself would count others. One more tells that the limit was reached; where
// there may be none for ever, the last one that is wanted ends it.
class LimitedHits final : public PassingHits {
public:
    enum class Ends : std::uint8_t { withOneMore, withTheLast };
    LimitedHits(std::int64_t limit, Ends ends, std::unique_ptr<HitConsumer> next)
        : PassingHits(std::move(next)), limit_(limit), ends_(ends) {}

    void take(const modDictation::Dictation& hit) override {
        if (offered_++ >= limit_)
            return;
        PassingHits::take(hit);
    }
    void endSearch(modDictation::SearchReport& report) override {
        report.limitReached = report.limitReached || offered_ > limit_;
        report.hits = std::min(offered_, limit_);
        PassingHits::endSearch(report);
        offered_ = 0;
    }
    bool isFull() const override {
        return offered_ >= limit_ + (ends_ == Ends::withOneMore ? 1 : 0) || PassingHits::isFull();
    }

private:
    std::int64_t limit_;
    Ends ends_;
    std::int64_t offered_ = 0;
};

} // namespace ov::cli
