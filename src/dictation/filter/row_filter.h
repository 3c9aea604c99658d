// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "dictation/filter/filter_words.h"
#include "dictation/filter/row_texts.h"
#include "dictation/filter/word_finder.h"
#include "dictation/search/matching.h"
#include "platform/locale.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <stop_token>
#include <string_view>
#include <vector>

namespace ov::modDictation {

// What rows must have to stay, see filter_words.h: words, each anywhere in one of the cells,
// without regard to letter case, as in searches, and criteria of the dictation, as searches test
// them. One thread at a time may use it; each has a copy.
class RowFilter {
public:
    RowFilter() = default;
    // `now` is what dates count from.
    explicit RowFilter(std::string_view text, const platform::DateTime& now = platform::now());

    // Keeps every row.
    bool empty() const noexcept { return criteria_.empty(); }
    const FilterReading& reading() const noexcept { return reading_; }
    // Whether `wider` keeps all rows that this one keeps.
    bool isWithin(const RowFilter& wider) const { return narrow(criteria_, wider.criteria_); }
    // Clears the marks of those hits of a part of `texts` that do not stay. One that keeps every
    // row makes the texts.
    void unmark(RowTexts& texts, std::size_t index, std::span<std::uint8_t> marks);

private:
    // One of these is enough.
    struct Group {
        std::vector<WordFinder> words; // that are shown
        std::vector<WordFinder> absent;
        std::optional<PreparedCriteria> criteria;
    };
    void add(std::span<const Criterion> group, const platform::DateTime& now);
    static void unmarkUnmet(Group& group, RowTexts& texts, const RowTexts::Part& part,
                            std::span<std::uint8_t> marks);

    std::vector<WordFinder> words_; // the longest first: it keeps the fewest
    std::vector<Group> groups_;
    std::optional<PreparedCriteria> prepared_; // that ask for nothing shown
    std::vector<Criterion> criteria_;          // all of it
    FilterReading reading_;
};

// The hits that a filter keeps: a mark, 0 or 1, for each hit of the list in the order found.
struct KeptHits {
    std::vector<std::uint8_t> marks;
    std::int32_t count = 0;
};

// On as many threads as the machine has processors, which it waits for. With `among` it looks only
// at the rows kept there. Nothing when stopped. An empty filter makes the texts and keeps all.
std::shared_ptr<const KeptHits> keptHits(RowTexts& texts, const RowFilter& filter,
                                         const KeptHits* among, const std::stop_token& stop);

} // namespace ov::modDictation
