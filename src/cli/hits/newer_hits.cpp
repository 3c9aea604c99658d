// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "cli/hits/newer_hits.h"

#include "platform/files.h"

#include <utility>

namespace ov::cli {

NewerHits::NewerHits(std::int64_t moment, std::unique_ptr<HitConsumer> next)
    : PassingHits(std::move(next)), moment_(moment) {}

void NewerHits::take(const modDictation::Dictation& hit) {
    if (platform::fileStamp(pathOf(hit)).modified <= moment_)
        return;
    ++passed_;
    PassingHits::take(hit);
}

void NewerHits::endSearch(modDictation::SearchReport& report) {
    report.hits = std::exchange(passed_, 0);
    PassingHits::endSearch(report);
}

} // namespace ov::cli
