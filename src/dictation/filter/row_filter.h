// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "dictation/filter/row_texts.h"
#include "dictation/filter/word_finder.h"

#include <cstdint>
#include <memory>
#include <span>
#include <stop_token>
#include <string_view>
#include <vector>

namespace ov::modDictation {

// The words, parted by blanks, that a row must show to stay: each anywhere in one of its cells,
// without regard to letter case, as in searches.
class RowFilter {
public:
    RowFilter() = default;
    explicit RowFilter(std::string_view text);

    // Keeps every row.
    bool empty() const noexcept { return words_.empty(); }
    // Whether `wider` keeps all rows that this one keeps.
    bool isWithin(const RowFilter& wider) const noexcept;
    // Clears the marks of the part's rows that lack a word.
    void unmark(const RowTexts::Part& part, std::span<std::uint8_t> marks) const;

private:
    std::vector<WordFinder> words_; // the longest first: it keeps the fewest
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
