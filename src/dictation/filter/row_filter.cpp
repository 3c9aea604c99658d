// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "dictation/filter/row_filter.h"

#include "dictation/search/parallel_work.h"
#include "platform/text.h"

#include <algorithm>
#include <numeric>
#include <thread>

namespace ov::modDictation {

namespace {

using Part = RowTexts::Part;

std::size_t beginOf(const Part& part, std::size_t row) noexcept {
    return row == 0 ? 0 : part.ends[row - 1];
}

// Clears the marks of rows `row` to `end` that lack the word. Looks through their text as a whole,
// which is far quicker than row by row.
void unmarkRun(const WordFinder& word, const Part& part, std::size_t row, std::size_t end,
               std::span<std::uint8_t> marks) {
    const std::string_view text(part.text.data(), beginOf(part, end));
    while (row < end) {
        const std::size_t found = word.find(text, beginOf(part, row));
        for (; row < end && part.ends[row] <= found; ++row)
            marks[row] = 0;
        ++row; // has it
    }
}

void unmarkWithout(const WordFinder& word, const Part& part, std::span<std::uint8_t> marks) {
    const auto begin = marks.begin();
    for (auto row = begin; (row = std::find(row, marks.end(), 1)) != marks.end();) {
        const auto end = std::find(row, marks.end(), 0);
        unmarkRun(word, part, static_cast<std::size_t>(row - begin),
                  static_cast<std::size_t>(end - begin), marks);
        row = end;
    }
}

} // namespace

RowFilter::RowFilter(std::string_view text) {
    for (text = platform::trimmed(text); !text.empty(); text = platform::trimmed(text)) {
        const std::size_t end = std::min(text.find_first_of(" \t"), text.size());
        words_.emplace_back(platform::upperCase(text.substr(0, end)));
        text.remove_prefix(end);
    }
    std::ranges::stable_sort(words_, [](const WordFinder& a, const WordFinder& b) {
        return a.word().size() > b.word().size();
    });
}

bool RowFilter::isWithin(const RowFilter& wider) const noexcept {
    return std::ranges::all_of(wider.words_, [this](const WordFinder& old) {
        return std::ranges::any_of(words_, [&old](const WordFinder& word) {
            return word.word().find(old.word()) != std::string::npos;
        });
    });
}

void RowFilter::unmark(const Part& part, std::span<std::uint8_t> marks) const {
    for (const WordFinder& word : words_)
        unmarkWithout(word, part, marks);
}

std::shared_ptr<const KeptHits> keptHits(RowTexts& texts, const RowFilter& filter,
                                         const KeptHits* among, const std::stop_token& stop) {
    const auto kept = std::make_shared<KeptHits>();
    kept->marks = among != nullptr ? among->marks : std::vector<std::uint8_t>(texts.hits(), 1);
    std::vector<std::int32_t> counts(texts.parts());
    const unsigned threads = std::max(std::thread::hardware_concurrency(), 1U);
    workInParallel(texts.parts(), threads, [&]() -> PieceWork {
        return [&](std::size_t index) {
            if (stop.stop_requested())
                return;
            const auto part = texts.part(index);
            const auto marks = std::span(kept->marks).subspan(part->first, part->ends.size());
            filter.unmark(*part, marks);
            counts[index] = static_cast<std::int32_t>(std::ranges::count(marks, 1));
        };
    });
    if (stop.stop_requested())
        return nullptr;
    kept->count = std::accumulate(counts.begin(), counts.end(), 0);
    return kept;
}

} // namespace ov::modDictation
