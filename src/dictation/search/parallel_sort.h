// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "dictation/search/parallel_work.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace ov::modDictation {

// So many entries are a part of a work: sorted or read within a few milliseconds.
constexpr std::size_t entriesPerPart = 16384;

constexpr std::size_t partsOf(std::size_t entries) noexcept {
    return (entries + entriesPerPart - 1) / entriesPerPart;
}

// Calls `work(begin, end)` for pieces of [0, count), on threads as workInParallel() does.
template <typename Work>
void forEachPart(std::size_t count, unsigned threads, Work work) {
    workInParallel(partsOf(count), threads, [&]() -> PieceWork {
        return [&](std::size_t part) {
            work(part * entriesPerPart, std::min((part + 1) * entriesPerPart, count));
        };
    });
}

// How many of the first `count` entries of two sorted ranges, merged, come from the left one.
template <typename Entry, typename Less>
std::size_t takenFromLeft(const Entry* left, std::size_t leftCount, const Entry* right,
                          std::size_t rightCount, std::size_t count, Less less) {
    std::size_t low = count > rightCount ? count - rightCount : 0;
    std::size_t high = std::min(count, leftCount);
    while (low < high) {
        const std::size_t middle = (low + high) / 2;
        if (less(left[middle], right[count - middle - 1]))
            low = middle + 1;
        else
            high = middle;
    }
    return low;
}

// Sorts [entries, entries + count), of which no two are equal, on threads. `spare` holds at least
// as many entries and is overwritten.
template <typename Entry, typename Less>
void sortInParallel(Entry* entries, std::size_t count, Entry* spare, unsigned threads, Less less) {
    forEachPart(count, threads, [&](std::size_t begin, std::size_t end) {
        std::sort(entries + begin, entries + end, less);
    });
    Entry* from = entries;
    Entry* to = spare;
    // Pairs of sorted ranges are merged, each part of what comes out by itself.
    for (std::size_t width = entriesPerPart; width < count; width *= 2, std::swap(from, to))
        forEachPart(count, threads, [&](std::size_t begin, std::size_t end) {
            const std::size_t first = begin / (2 * width) * 2 * width;
            const Entry* const left = from + first;
            const std::size_t leftCount = std::min(width, count - first);
            const Entry* const right = left + leftCount;
            const std::size_t rightCount = std::min(width, count - first - leftCount);
            const auto split = [&](std::size_t place) {
                return takenFromLeft(left, leftCount, right, rightCount, place - first, less);
            };
            const std::size_t leftBegin = split(begin);
            const std::size_t leftEnd = split(end);
            std::merge(left + leftBegin, left + leftEnd, right + (begin - first - leftBegin),
                       right + (end - first - leftEnd), to + begin, less);
        });
    if (from != entries)
        forEachPart(count, threads, [&](std::size_t begin, std::size_t end) {
            std::copy(from + begin, from + end, entries + begin);
        });
}

} // namespace ov::modDictation
