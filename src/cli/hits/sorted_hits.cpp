// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "cli/hits/sorted_hits.h"

#include "cli/terminal_interface.h"

#include <algorithm>
#include <utility>

namespace ov::cli {

using modDictation::Dictation;
using modDictation::DictationList;

namespace {

constexpr std::int64_t alwaysHeld = 50'000; // fewer are not worth the sorting

} // namespace

SortedHits::SortedHits(std::vector<modDictation::SortKey> keys, const HitLimit& limit,
                       std::unique_ptr<HitConsumer> next)
    : PassingHits(std::move(next)),
      keys_(std::move(keys)),
      limit_(limit),
      held_(std::make_unique<DictationList>()) {}

void SortedHits::take(const Dictation& hit) {
    held_->add(hit.directory, hit.name);
    if (held_->size() >= std::max(2 * std::int64_t{limit_.count}, alwaysHeld))
        dropTheRest();
}

std::vector<std::int32_t> SortedHits::best() const {
    std::vector<std::int32_t> order = sortedOrder(*held_, keys_);
    order.resize(std::min(order.size(), static_cast<std::size_t>(limit_.count)));
    return order;
}

void SortedHits::dropTheRest() {
    std::vector<std::int32_t> kept = best();
    std::ranges::sort(kept); // as found, which is how equal ones stand
    auto rest = std::make_unique<DictationList>();
    for (const std::int32_t index : kept) {
        const Dictation hit = (*held_)[index];
        rest->add(hit.directory, hit.name);
    }
    held_ = std::move(rest);
    hasDropped_ = true;
}

void SortedHits::endSearch(modDictation::SearchReport& report) {
    const std::vector<std::int32_t> order = best();
    const auto count = static_cast<std::int64_t>(order.size());
    // Who named a limit asked for no more than that.
    report.limitReached =
        !limit_.isNamed && (std::exchange(hasDropped_, false) || count < held_->size());
    report.hits = count;
    // A search that was stopped has its hits taken all the same; what is stopped now is the taking.
    const bool mayStop = !TerminalInterface::interrupted();
    for (auto index = order.begin(); index != order.end() && !isFull(); ++index) {
        PassingHits::take((*held_)[*index]);
        if (mayStop && TerminalInterface::interrupted()) {
            report.stopped = true;
            break;
        }
    }
    held_->clear();
    PassingHits::pause();
    PassingHits::endSearch(report);
}

} // namespace ov::cli
