// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "cli/hits/hit_consumer.h"

#include <cstdint>
#include <memory>

namespace ov::cli {

// Takes so many hits of a search and no more, where what is found is not yet what is taken: the
// limit of the search itself would count others.
class LimitedHits final : public PassingHits {
public:
    LimitedHits(std::int64_t limit, std::unique_ptr<HitConsumer> next)
        : PassingHits(std::move(next)), limit_(limit) {}

    void take(const modDictation::Dictation& hit) override {
        if (taken_ == limit_)
            return;
        ++taken_;
        PassingHits::take(hit);
    }
    void endSearch(modDictation::SearchReport& report) override {
        report.limitReached = report.limitReached || taken_ == limit_;
        report.hits = taken_;
        PassingHits::endSearch(report);
        taken_ = 0;
    }
    bool isFull() const override { return taken_ == limit_ || PassingHits::isFull(); }

private:
    std::int64_t limit_;
    std::int64_t taken_ = 0;
};

} // namespace ov::cli
