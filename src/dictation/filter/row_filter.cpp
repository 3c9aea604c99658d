// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "dictation/filter/row_filter.h"

#include "dictation/dictation_record.h"
#include "dictation/filter/filter_words.h"
#include "dictation/search/parallel_work.h"
#include "platform/text.h"

#include <algorithm>
#include <numeric>
#include <string>
#include <thread>
#include <utility>

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

// `first` is the hit of the first mark, counted from 0.
void unmarkUnmet(PreparedCriteria& criteria, const DictationList& list, std::size_t first,
                 std::span<std::uint8_t> marks) {
    std::string buffer;
    for (std::size_t i = 0; i < marks.size(); ++i) {
        if (marks[i] == 0)
            continue;
        const Dictation dictation = list[static_cast<std::int32_t>(first + i) + 1];
        const std::string_view name = dictationName(dictation.name, buffer);
        marks[i] = MatchDictation(dictation.directory, name, criteria, true) ? 1 : 0;
    }
}

} // namespace

RowFilter::RowFilter(std::string_view text, const platform::DateTime& now) {
    FilterWords words = filterWords(text, now);
    for (std::string& word : words.shown)
        words_.emplace_back(std::move(word));
    std::ranges::stable_sort(words_, [](const WordFinder& a, const WordFinder& b) {
        return a.word().size() > b.word().size();
    });
    if (!words.criteria.empty())
        prepared_.emplace(words.criteria, now);
    criteria_ = std::move(words.criteria);
}

bool RowFilter::isWithin(const RowFilter& wider) const noexcept {
    return narrow(criteria_, wider.criteria_) &&
           std::ranges::all_of(wider.words_, [this](const WordFinder& old) {
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
        return [&, criteria = filter.preparedCriteria()](std::size_t index) mutable {
            if (stop.stop_requested())
                return;
            const auto [first, end] = texts.hitsOfPart(index);
            const auto marks = std::span(kept->marks).subspan(first, end - first);
            if (filter.hasWords() || !criteria)
                filter.unmark(*texts.part(index), marks);
            if (criteria)
                unmarkUnmet(*criteria, texts.list(), first, marks);
            counts[index] = static_cast<std::int32_t>(std::ranges::count(marks, 1));
        };
    });
    if (stop.stop_requested())
        return nullptr;
    kept->count = std::accumulate(counts.begin(), counts.end(), 0);
    return kept;
}

} // namespace ov::modDictation
