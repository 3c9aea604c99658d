// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "dictation/search/result_order.h"

#include "dictation/field_table.h"
#include "dictation/field_values.h"
#include "dictation/search/collation_key.h"
#include "dictation/search/parallel_sort.h"
#include "dictation/search/text_sorter.h"
#include "support/block_arena.h"
#include "support/language/language_id.h"
#include "support/language/modLanguage.h"

#include <unicode/uloc.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <deque>
#include <iterator>
#include <numeric>
#include <span>
#include <thread>
#include <utility>

namespace ov::modDictation {

namespace {

// The alphabet of the user's country; a process without a country takes that of the language.
std::string userAlphabet() {
    std::string locale = uloc_getDefault();
    if (!locale.starts_with("en_US_POSIX"))
        return locale;
    const std::int32_t language = modLanguage::Language();
    return language_id::isGerman(language) ? "de" : "en";
}

struct NumberEntry {
    double number;
    std::int32_t index;
};

// Their memory is first touched by the threads that write it.
template <typename Entry>
class Entries {
public:
    explicit Entries(std::size_t count)
        : entries_(std::make_unique_for_overwrite<Entry[]>(count)), count_(count) {}

    std::span<Entry> all() const noexcept { return {entries_.get(), count_}; }

private:
    std::unique_ptr<Entry[]> entries_;
    std::size_t count_;
};

std::size_t countOf(const DictationList& list) noexcept {
    return static_cast<std::size_t>(list.size());
}

std::int32_t hitAt(std::size_t place) noexcept {
    return static_cast<std::int32_t>(place) + 1;
}

struct PathEntry {
    std::int32_t index;
};

// What is left of the path behind the first bytes of its directory.
std::string restOfPath(const Dictation& dictation, std::size_t done) {
    std::string rest(dictation.directory.substr(done));
    std::ranges::replace(rest, '\\', '/');
    return rest.append(dictation.name);
}

// Mostly the directories, which many hits share, tell already.
int comparePaths(const Dictation& a, const Dictation& b) {
    if (a.directory == b.directory)
        return a.name.compare(b.name);
    const auto [first, second] = std::ranges::mismatch(a.directory, b.directory);
    const auto same = static_cast<std::size_t>(first - a.directory.begin());
    return restOfPath(a, same).compare(restOfPath(b, same));
}

// The indexes of sorted entries, marked as ResultOrders keeps them.
template <typename Entry, typename EqualsBefore>
std::vector<std::int32_t> markedOrder(std::span<Entry> entries, unsigned threads,
                                      EqualsBefore equalsBefore) {
    std::vector<std::int32_t> order(entries.size());
    forEachPart(entries.size(), threads, [&](std::size_t begin, std::size_t end) {
        for (std::size_t i = begin; i < end; ++i)
            order[i] = i > 0 && equalsBefore(i) ? -entries[i].index : entries[i].index;
    });
    return order;
}

std::vector<std::int32_t> fromTop(const std::vector<std::int32_t>& marked) {
    std::vector<std::int32_t> order(marked.size());
    std::transform(marked.begin(), marked.end(), order.begin(),
                   [](std::int32_t index) { return std::abs(index); });
    return order;
}

// Equal ones stay as they are.
std::vector<std::int32_t> fromBottom(const std::vector<std::int32_t>& marked) {
    std::vector<std::int32_t> order;
    order.reserve(marked.size());
    for (auto end = marked.end(); end != marked.begin();) {
        auto first = end - 1;
        while (*first < 0)
            --first;
        std::transform(first, end, std::back_inserter(order),
                       [](std::int32_t index) { return std::abs(index); });
        end = first;
    }
    return order;
}

// The same order, or that from the bottom, but equal ones as they are in `ties`: each hit there
// takes the next place among its equals.
std::vector<std::int32_t> withTies(const std::vector<std::int32_t>& marked, bool descending,
                                   const std::vector<std::int32_t>& ties) {
    const auto count = static_cast<std::int32_t>(marked.size());
    std::vector<std::int32_t> runOf(marked.size()); // by hit: where its equals begin
    std::vector<std::int32_t> next(marked.size());  // of those: the next free place
    for (std::int32_t begin = 0, end = 0; begin < count; begin = end) {
        for (end = begin;
             end == begin || (end < count && marked[static_cast<std::size_t>(end)] < 0); ++end)
            runOf[static_cast<std::size_t>(std::abs(marked[static_cast<std::size_t>(end)]) - 1)] =
                begin;
        next[static_cast<std::size_t>(begin)] = descending ? count - end : begin;
    }
    std::vector<std::int32_t> order(marked.size());
    for (const std::int32_t hit : ties) {
        const std::int32_t run = runOf[static_cast<std::size_t>(hit) - 1];
        order[static_cast<std::size_t>(next[static_cast<std::size_t>(run)]++)] = hit;
    }
    return order;
}

} // namespace

ResultOrders::ResultOrders(unsigned threads)
    : threads_(threads > 0 ? threads : std::max(std::thread::hardware_concurrency(), 1U)) {}

ResultOrders::~ResultOrders() = default;

std::vector<std::int32_t> ResultOrders::byNumber(const DictationList& list,
                                                 std::int32_t field) const {
    const Entries<NumberEntry> ours(countOf(list));
    const std::span<NumberEntry> entries = ours.all();
    forEachPart(entries.size(), threads_, [&](std::size_t begin, std::size_t end) {
        for (std::size_t i = begin; i < end; ++i)
            entries[i] = {sortNumber(field, list[hitAt(i)]), hitAt(i)};
    });
    const Entries<NumberEntry> spare(entries.size());
    sortInParallel(entries.data(), entries.size(), spare.all().data(), threads_,
                   [](const NumberEntry& a, const NumberEntry& b) {
                       return a.number != b.number ? a.number < b.number : a.index < b.index;
                   });
    return markedOrder(entries, threads_,
                       [&](std::size_t i) { return entries[i].number == entries[i - 1].number; });
}

std::vector<std::int32_t> ResultOrders::byText(const DictationList& list,
                                               std::int32_t field) const {
    constexpr std::size_t blockSize = std::size_t{1} << 17U;
    const Entries<TextEntry> ours(countOf(list));
    const std::span<TextEntry> entries = ours.all();
    std::deque<BlockArena> keys; // one for each part
    while (keys.size() < partsOf(entries.size()))
        keys.emplace_back(blockSize);
    workInParallel(keys.size(), threads_, [&]() -> PieceWork {
        const auto collation = std::make_shared<CollationKeys>(*alphabet_);
        return [&, collation](std::size_t part) {
            const std::size_t end = std::min((part + 1) * entriesPerPart, entries.size());
            std::string key;
            for (std::size_t i = part * entriesPerPart; i < end; ++i) {
                key.clear();
                collation->append(shownValue(field, list[hitAt(i)]), key);
                entries[i] = textEntry({keys[part].keep(key), key.size()}, hitAt(i));
            }
        };
    });
    TextSorter(entries, threads_).sort();
    return markedOrder(entries, threads_, [&](std::size_t i) { return entries[i].key == nullptr; });
}

std::vector<std::int32_t> ResultOrders::byPath(const DictationList& list) const {
    const Entries<PathEntry> ours(countOf(list));
    const std::span<PathEntry> entries = ours.all();
    for (std::size_t i = 0; i < entries.size(); ++i)
        entries[i] = {hitAt(i)};
    const auto compare = [&list](PathEntry a, PathEntry b) {
        return comparePaths(list[a.index], list[b.index]);
    };
    const Entries<PathEntry> spare(entries.size());
    sortInParallel(entries.data(), entries.size(), spare.all().data(), threads_,
                   [&](PathEntry a, PathEntry b) {
                       const int order = compare(a, b);
                       return order != 0 ? order < 0 : a.index < b.index;
                   });
    return markedOrder(entries, threads_,
                       [&](std::size_t i) { return compare(entries[i], entries[i - 1]) == 0; });
}

// Aside, as even the memory for so many entries takes longer than a window should stand still.
std::vector<std::int32_t> ResultOrders::ascending(const DictationList& list, std::int32_t field,
                                                  const std::string& alphabet) {
    std::vector<std::int32_t> order;
    const auto sort = [&] {
        if (field == wholePath) {
            order = byPath(list);
            return;
        }
        if (!sortsByNumber(field) && (!alphabet_ || locale_ != alphabet)) {
            alphabet_ = std::make_unique<CollationAlphabet>(alphabet);
            locale_ = alphabet;
        }
        order = sortsByNumber(field) ? byNumber(list, field) : byText(list, field);
    };
    if (countOf(list) > entriesPerPart)
        workAside(sort);
    else
        sort();
    return order;
}

const std::vector<std::int32_t>& ResultOrders::marked(const DictationList& list,
                                                      std::int32_t field) {
    const std::string alphabet = sortsByNumber(field) ? std::string() : userAlphabet();
    const auto found = std::find_if(kept_.begin(), kept_.end(), [&](const Kept& kept) {
        return kept.field == field && kept.alphabet == alphabet;
    });
    if (found != kept_.end()) {
        std::rotate(found, found + 1, kept_.end());
    } else {
        Kept made{field, alphabet, ascending(list, field, alphabet)};
        if (kept_.size() == mostKept)
            kept_.erase(kept_.begin());
        kept_.push_back(std::move(made));
    }
    return kept_.back().order;
}

std::vector<std::int32_t> ResultOrders::sorted(const DictationList& list, std::int32_t field,
                                               bool descending) {
    const std::vector<std::int32_t>& order = marked(list, field);
    return descending ? fromBottom(order) : fromTop(order);
}

std::vector<std::int32_t> ResultOrders::sorted(const DictationList& list, SortKey first,
                                               SortKey second) {
    if (second.field == noField || second.field == first.field)
        return sorted(list, first.field, first.descending);
    return sorted(list, std::array{first, second});
}

std::vector<std::int32_t> ResultOrders::sorted(const DictationList& list,
                                               std::span<const SortKey> keys) {
    if (keys.empty()) {
        std::vector<std::int32_t> found(countOf(list));
        std::iota(found.begin(), found.end(), 1);
        return found;
    }
    std::vector<std::int32_t> order = sorted(list, keys.back().field, keys.back().descending);
    for (auto key = keys.rbegin() + 1; key != keys.rend(); ++key)
        order = withTies(marked(list, key->field), key->descending, order);
    return order;
}

std::vector<std::int32_t> sortedOrder(const DictationList& list, std::int32_t field,
                                      bool descending) {
    return ResultOrders().sorted(list, field, descending);
}

std::vector<std::int32_t> sortedOrder(const DictationList& list, std::span<const SortKey> keys) {
    return ResultOrders().sorted(list, keys);
}

} // namespace ov::modDictation
