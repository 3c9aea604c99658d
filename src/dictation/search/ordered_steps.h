// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "platform/user_interface.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace ov::modDictation {

// Sorts [entries, entriesEnd) in steps of a few milliseconds, between which window messages are
// handled. `spare` holds at least as many entries and is overwritten.
template <typename Entry, typename Less>
void sortInSteps(Entry* entries, Entry* entriesEnd, Entry* spare, Less less) {
    constexpr std::ptrdiff_t step = 16384;
    const std::ptrdiff_t count = entriesEnd - entries;
    for (std::ptrdiff_t start = 0; start < count; start += step) {
        std::sort(entries + start, entries + std::min(start + step, count), less);
        platform::processMessagesNowAndThen();
    }
    Entry* from = entries;
    Entry* to = spare;
    for (std::ptrdiff_t width = step; width < count; width *= 2, std::swap(from, to))
        for (std::ptrdiff_t start = 0; start < count; start += 2 * width) {
            const Entry* left = from + start;
            const Entry* const middle = from + std::min(start + width, count);
            const Entry* right = middle;
            const Entry* const end = from + std::min(start + 2 * width, count);
            Entry* out = to + start;
            for (std::ptrdiff_t done = 1; left != middle || right != end; ++done) {
                const bool takeRight = left == middle || (right != end && less(*right, *left));
                *out++ = takeRight ? *right++ : *left++;
                if (done % step == 0)
                    platform::processMessagesNowAndThen();
            }
        }
    if (from != entries)
        std::copy_n(spare, count, entries);
}

} // namespace ov::modDictation
