// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "dictation/filter/hit_lengths.h"

#include "dictation/field_table.h"
#include "dictation/field_values.h"
#include "dictation/search/parallel_sort.h"

#include <algorithm>
#include <thread>

namespace ov::modDictation {

std::vector<std::int32_t> hitLengths(const DictationList& hits, const std::stop_token& stop) {
    std::vector<std::int32_t> lengths(static_cast<std::size_t>(hits.size()));
    const unsigned threads = std::max(std::thread::hardware_concurrency(), 1U);
    forEachPart(lengths.size(), threads, [&](std::size_t begin, std::size_t end) {
        for (std::size_t i = begin; i < end && !stop.stop_requested(); ++i)
            lengths[i] = static_cast<std::int32_t>(std::max(
                sortNumber(field_id::length, hits[static_cast<std::int32_t>(i) + 1]), 0.0));
    });
    return stop.stop_requested() ? std::vector<std::int32_t>() : lengths;
}

} // namespace ov::modDictation
