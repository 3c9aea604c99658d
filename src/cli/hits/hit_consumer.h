// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "cli/exit_code.h"
#include "dictation/dictation.h"
#include "dictation/search/search.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <utility>

// What becomes of hits. A command that searches hands all that it finds to one of these, as it is
// found and in that order.

namespace ov::cli {

class HitConsumer {
public:
    virtual ~HitConsumer() = default;

    // Before the first search.
    virtual void begin() {}
    virtual void take(const modDictation::Dictation& hit) = 0;
    // For now no more have been found.
    virtual void pause() {}
    // It may take long until there are more: nothing is to be held back.
    virtual void catchUp() {}
    // The search is over. What became of its hits may be another report than what was found.
    virtual void endSearch(modDictation::SearchReport& /*report*/) {}
    // After the last search.
    virtual void end() {}
    // It wants no more.
    virtual bool isFull() const { return false; }
    // The field by whose value it counts hits (noField: in all) and does nothing else; these may
    // then be handed over with one for all that are like it.
    virtual std::optional<std::int32_t> countsBy() const { return std::nullopt; }
    virtual void takeMany(const modDictation::Dictation& one, std::int64_t count) {
        while (count-- > 0)
            take(one);
    }
    // The exit code, where that is what searching answered.
    virtual ExitCode result(ExitCode ofSearches) const { return ofSearches; }
};

// Hands on what has been found since, until it wants no more.
inline void handOn(modDictation::DictationList& hits, HitConsumer& consumer) {
    if (hits.empty())
        return;
    for (std::int32_t index = 1; index <= hits.size() && !consumer.isFull(); ++index)
        consumer.take(hits[index]);
    hits.clear();
    consumer.pause();
}

// Hands on what it is told, all of it unless a class says otherwise.
class PassingHits : public HitConsumer {
public:
    explicit PassingHits(std::unique_ptr<HitConsumer> next) : next_(std::move(next)) {}

    void begin() override { next_->begin(); }
    void take(const modDictation::Dictation& hit) override { next_->take(hit); }
    void pause() override { next_->pause(); }
    void catchUp() override { next_->catchUp(); }
    void endSearch(modDictation::SearchReport& report) override { next_->endSearch(report); }
    void end() override { next_->end(); }
    bool isFull() const override { return next_->isFull(); }
    ExitCode result(ExitCode ofSearches) const override { return next_->result(ofSearches); }

private:
    std::unique_ptr<HitConsumer> next_;
};

} // namespace ov::cli
