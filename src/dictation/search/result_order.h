// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "dictation/search/dictation_list.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace ov::modDictation {

class CollationAlphabet;

// In place of a field: the whole path, byte by byte as the system writes it.
constexpr std::int32_t wholePath = -1;

struct SortKey {
    std::int32_t field = 0; // 0: none
    bool descending = false;
    bool operator==(const SortKey&) const = default;
};

// The orders of a list's hits by its fields. The last few are kept, in either direction at four
// bytes a hit, so that one that was there before comes back at once.
class ResultOrders {
public:
    static constexpr std::size_t mostKept = 8;

    // On as many threads; 0: as the machine has processors.
    explicit ResultOrders(unsigned threads = 0);
    ~ResultOrders();
    ResultOrders(const ResultOrders&) = delete;
    ResultOrders& operator=(const ResultOrders&) = delete;

    // The order by a search field, as indexes into `list` counted from 1. Dates sort by day and
    // time, lengths by seconds, codes by number, text by the alphabet of the user's language
    // without regard to case, digits in it by their value (9 before 10). Hits without a value come
    // first. Equal ones keep the order in which they were found, also when `descending`. Each field
    // value is read once. Lets window messages be handled; `list` must not change meanwhile.
    std::vector<std::int32_t> sorted(const DictationList& list, std::int32_t field,
                                     bool descending);

    // The same, but ones that are equal by `first` stand in the order by `second`, unless that is
    // none.
    std::vector<std::int32_t> sorted(const DictationList& list, SortKey first, SortKey second);

    // The same with any number of keys, each for those that are equal by all before it. Without any
    // the order is that in which they were found.
    std::vector<std::int32_t> sorted(const DictationList& list, std::span<const SortKey> keys);

    // The list's hits are others from now on.
    void forget() noexcept { kept_.clear(); }

private:
    struct Kept {
        std::int32_t field = 0;
        std::string alphabet;
        // Ascending; an index below 0 stands for its opposite, equal to the one before.
        std::vector<std::int32_t> order;
    };

    std::vector<std::int32_t> byNumber(const DictationList& list, std::int32_t field) const;
    std::vector<std::int32_t> byText(const DictationList& list, std::int32_t field) const;
    std::vector<std::int32_t> byPath(const DictationList& list) const;
    std::vector<std::int32_t> ascending(const DictationList& list, std::int32_t field,
                                        const std::string& alphabet);
    // As it is kept.
    const std::vector<std::int32_t>& marked(const DictationList& list, std::int32_t field);

    unsigned threads_;
    std::vector<Kept> kept_; // the last one used is the last
    std::string locale_;     // of the alphabet
    std::unique_ptr<const CollationAlphabet> alphabet_;
};

// Those that are not kept.
std::vector<std::int32_t> sortedOrder(const DictationList& list, std::int32_t field,
                                      bool descending);
std::vector<std::int32_t> sortedOrder(const DictationList& list, std::span<const SortKey> keys);

} // namespace ov::modDictation
