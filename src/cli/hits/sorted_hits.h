// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "cli/hits/hit_consumer.h"
#include "cli/search_request.h"
#include "dictation/search/dictation_list.h"
#include "dictation/search/result_order.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace ov::cli {

// Holds the hits of a search back until it is over and hands the first ones of their order on.
// Keeps no more than twice as many, or some ten thousands.
class SortedHits final : public PassingHits {
public:
    SortedHits(std::vector<modDictation::SortKey> keys, const HitLimit& limit,
               std::unique_ptr<HitConsumer> next);

    void take(const modDictation::Dictation& hit) override;
    void pause() override {}
    void endSearch(modDictation::SearchReport& report) override;

private:
    std::vector<std::int32_t> best() const;
    void dropTheRest();

    std::vector<modDictation::SortKey> keys_;
    HitLimit limit_;
    std::unique_ptr<modDictation::DictationList> held_;
    bool hasDropped_ = false;
};

} // namespace ov::cli
