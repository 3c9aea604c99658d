// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "dictation/search/text_sorter.h"

#include "dictation/search/parallel_sort.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cstring>
#include <vector>

namespace ov::modDictation {

namespace {

using Run = std::span<TextEntry>;

constexpr std::size_t chunkSize = sizeof(std::uint64_t);

// As a number that compares as the bytes do.
std::uint64_t chunkOf(std::string_view key) noexcept {
    std::array<unsigned char, chunkSize> bytes{};
    std::memcpy(bytes.data(), key.data(), std::min(key.size(), chunkSize));
    const auto at = [&bytes](std::size_t i) { return std::uint64_t{bytes[i]}; };
    return at(0) << 56U | at(1) << 48U | at(2) << 40U | at(3) << 32U | at(4) << 24U | at(5) << 16U |
           at(6) << 8U | at(7);
}

bool byChunk(const TextEntry& a, const TextEntry& b) noexcept {
    return a.chunk != b.chunk ? a.chunk < b.chunk : a.index < b.index;
}

// False when no entry has any byte left.
bool readNext(Run run, std::size_t depth) noexcept {
    bool any = false;
    for (TextEntry& entry : run) {
        const std::size_t left = entry.length > depth ? entry.length - depth : 0;
        any = any || left > 0;
        entry.chunk = left > 0 ? chunkOf({entry.key + depth, left}) : 0;
    }
    return any;
}

bool isOneChunk(Run run) noexcept {
    const auto differs = [&run](const TextEntry& e) { return e.chunk != run.front().chunk; };
    return std::none_of(run.begin(), run.end(), differs);
}

void markEqual(Run run) noexcept {
    for (TextEntry& entry : run.subspan(1))
        entry.key = nullptr;
}

// The entries from `start` on that have its chunk.
Run runAt(Run run, std::size_t start) noexcept {
    std::size_t end = start + 1;
    while (end < run.size() && run[end].chunk == run[start].chunk)
        ++end;
    return run.subspan(start, end - start);
}

// By what lies behind the first `depth` bytes, in which all are equal.
void sortShortRun(Run run, std::size_t depth) {
    do {
        if (!readNext(run, depth))
            return markEqual(run);
        depth += chunkSize;
    } while (isOneChunk(run)); // a long beginning that all have in common
    std::sort(run.begin(), run.end(), byChunk);
    for (std::size_t start = 0; start < run.size();) {
        const Run same = runAt(run, start);
        if (same.size() > 1)
            sortShortRun(same, depth);
        start += same.size();
    }
}

// The runs of more than one entry that start there.
std::vector<Run> runsOf(Run run, std::size_t begin, std::size_t end) {
    std::vector<Run> runs;
    while (begin > 0 && begin < end && run[begin].chunk == run[begin - 1].chunk)
        ++begin;
    while (begin < end) {
        const Run same = runAt(run, begin);
        begin += same.size();
        if (same.size() > 1)
            runs.push_back(same);
    }
    return runs;
}

// Too long for one thread.
bool isLong(Run run) noexcept {
    return run.size() > entriesPerPart;
}

} // namespace

TextEntry textEntry(std::string_view key, std::int32_t index) noexcept {
    return {chunkOf(key), key.data(), static_cast<std::uint32_t>(key.size()), index};
}

void TextSorter::sort() {
    if (!entries_.empty())
        sortChunks(entries_, 0);
}

// `depth` is where their chunks begin.
void TextSorter::sortChunks(Run run, std::size_t depth) {
    depth += chunkSize;
    if (isOneChunk(run))
        return sortLongRun(run, depth);
    sortInParallel(run.data(), run.size(), spare_.get(), threads_, byChunk);
    // All runs are found before the first one is changed.
    std::vector<std::vector<Run>> runs(partsOf(run.size()));
    forEachPart(run.size(), threads_, [&](std::size_t begin, std::size_t end) {
        runs[begin / entriesPerPart] = runsOf(run, begin, end);
    });
    workInParallel(runs.size(), threads_, [&]() -> PieceWork {
        return [&](std::size_t part) {
            for (const Run same : runs[part])
                if (!isLong(same))
                    sortShortRun(same, depth);
        };
    });
    for (const std::vector<Run>& part : runs)
        for (const Run same : part)
            if (isLong(same))
                sortLongRun(same, depth);
}

void TextSorter::sortLongRun(Run run, std::size_t depth) {
    if (readChunks(run, depth))
        return sortChunks(run, depth);
    forEachPart(run.size(), threads_, [&](std::size_t begin, std::size_t end) {
        for (std::size_t i = std::max<std::size_t>(begin, 1); i < end; ++i)
            run[i].key = nullptr;
    });
}

bool TextSorter::readChunks(Run run, std::size_t depth) const {
    std::atomic<bool> any{false};
    forEachPart(run.size(), threads_, [&](std::size_t begin, std::size_t end) {
        if (readNext(run.subspan(begin, end - begin), depth))
            any = true;
    });
    return any;
}

} // namespace ov::modDictation
