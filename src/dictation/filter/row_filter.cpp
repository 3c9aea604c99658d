// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "dictation/filter/row_filter.h"

#include "dictation/dictation_record.h"
#include "dictation/search/parallel_work.h"
#include "dictation/typed/quick_text.h"

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

// Clears the marks of hits by whether they meet the criteria; `first` is the hit of the first mark,
// counted from 0.
void unmarkIf(bool met, PreparedCriteria& criteria, bool all, const DictationList& list,
              std::size_t first, std::span<std::uint8_t> marks) {
    std::string buffer;
    for (std::size_t i = 0; i < marks.size(); ++i) {
        if (marks[i] == 0)
            continue;
        const Dictation dictation = list[static_cast<std::int32_t>(first + i) + 1];
        const std::string_view name = dictationName(dictation.name, buffer);
        if (MatchDictation(dictation.directory, name, criteria, all) == met)
            marks[i] = 0;
    }
}

void clearMarks(std::span<const std::uint8_t> of, std::span<std::uint8_t> marks) {
    for (std::size_t i = 0; i < marks.size(); ++i)
        marks[i] &= static_cast<std::uint8_t>(of[i] ^ 1U);
}

bool asksForShown(const Criterion& criterion) {
    return criterion.Field == shownTexts;
}

} // namespace

RowFilter::RowFilter(std::string_view text, const platform::DateTime& now) {
    FilterWords words = filterWords(text, now);
    criteria_ = std::move(words.criteria);
    reading_ = std::move(words.reading);
    std::vector<Criterion> others;
    for (const auto& group : groupsOf(criteria_))
        if (std::ranges::any_of(group, asksForShown))
            add(group, now);
        else
            others.insert(others.end(), group.begin(), group.end());
    std::ranges::stable_sort(words_, [](const WordFinder& a, const WordFinder& b) {
        return a.word().size() > b.word().size();
    });
    if (!others.empty())
        prepared_.emplace(others, now);
}

void RowFilter::add(std::span<const Criterion> group, const platform::DateTime& now) {
    Group parts;
    std::vector<Criterion> criteria;
    for (const Criterion& criterion : group)
        if (!asksForShown(criterion))
            criteria.push_back(criterion);
        else if (criterion.Operator == operator_id::contains)
            parts.words.emplace_back(criterion.Value1);
        else
            parts.absent.emplace_back(criterion.Value1);
    if (group.size() == 1 && !parts.words.empty()) {
        words_.push_back(std::move(parts.words.front()));
        return;
    }
    for (Criterion& criterion : criteria)
        criterion.indented = false;
    if (!criteria.empty())
        parts.criteria.emplace(criteria, now);
    groups_.push_back(std::move(parts));
}

// Each way to meet the group leaves fewer rows to look at.
void RowFilter::unmarkUnmet(Group& group, RowTexts& texts, const Part& part,
                            std::span<std::uint8_t> marks) {
    std::vector<std::uint8_t> unmet(marks.begin(), marks.end());
    for (const WordFinder& word : group.absent)
        unmarkWithout(word, part, unmet);
    for (const WordFinder& word : group.words) {
        std::vector<std::uint8_t> having = unmet;
        unmarkWithout(word, part, having);
        clearMarks(having, unmet);
    }
    if (group.criteria)
        unmarkIf(true, *group.criteria, false, texts.list(), part.first, unmet);
    clearMarks(unmet, marks);
}

void RowFilter::unmark(RowTexts& texts, std::size_t index, std::span<std::uint8_t> marks) {
    if (!words_.empty() || !groups_.empty() || !prepared_) {
        const auto part = texts.part(index);
        for (const WordFinder& word : words_)
            unmarkWithout(word, *part, marks);
        for (Group& group : groups_)
            unmarkUnmet(group, texts, *part, marks);
    }
    if (prepared_)
        unmarkIf(false, *prepared_, true, texts.list(), texts.hitsOfPart(index).first, marks);
}

std::shared_ptr<const KeptHits> keptHits(RowTexts& texts, const RowFilter& filter,
                                         const KeptHits* among, const std::stop_token& stop) {
    const auto kept = std::make_shared<KeptHits>();
    kept->marks = among != nullptr ? among->marks : std::vector<std::uint8_t>(texts.hits(), 1);
    std::vector<std::int32_t> counts(texts.parts());
    const unsigned threads = std::max(std::thread::hardware_concurrency(), 1U);
    workInParallel(texts.parts(), threads, [&]() -> PieceWork {
        return [&, own = filter](std::size_t index) mutable {
            if (stop.stop_requested())
                return;
            const auto [first, end] = texts.hitsOfPart(index);
            const auto marks = std::span(kept->marks).subspan(first, end - first);
            own.unmark(texts, index, marks);
            counts[index] = static_cast<std::int32_t>(std::ranges::count(marks, 1));
        };
    });
    if (stop.stop_requested())
        return nullptr;
    kept->count = std::accumulate(counts.begin(), counts.end(), 0);
    return kept;
}

} // namespace ov::modDictation
