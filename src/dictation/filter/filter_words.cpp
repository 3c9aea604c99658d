// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "dictation/filter/filter_words.h"

#include "dictation/typed/quick_lexer.h"
#include "dictation/typed/quick_text.h"
#include "platform/text.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace ov::modDictation {

namespace {

constexpr std::string_view blanks = " \t";

bool testsField(std::string_view word) {
    takeNegation(word);
    return namesField(word);
}

// With a text in quotes behind the name of a field, but not otherwise.
std::string_view takeWord(std::string_view& text) {
    const std::string_view plain = text.substr(0, text.find_first_of(blanks));
    const std::size_t end = testsField(plain) ? findUnquoted(text, blanks) : plain.size();
    const std::string_view word = text.substr(0, end);
    text = platform::trimmed(text.substr(word.size()));
    return word;
}

std::optional<Condition> conditionOfWord(std::string_view word, const platform::DateTime& now) {
    if (!testsField(word))
        return std::nullopt;
    QuickCondition read = parseQuickWord(word, now);
    return read.ok() ? std::optional(std::move(read.condition)) : std::nullopt;
}

bool isNarrower(const Criterion& one, const Criterion& wider) {
    if (one == wider)
        return true;
    return one.Operator == operator_id::contains && wider.Operator == operator_id::contains &&
           one.Field == wider.Field &&
           platform::upperCase(one.Value1).find(platform::upperCase(wider.Value1)) !=
               std::string::npos;
}

} // namespace

FilterWords filterWords(std::string_view text, const platform::DateTime& now) {
    FilterWords words;
    std::vector<Condition> conditions;
    for (text = platform::trimmed(text); !text.empty();) {
        const std::string_view word = takeWord(text);
        if (word.ends_with(':') && testsField(word))
            continue;
        if (auto condition = conditionOfWord(word, now))
            conditions.push_back(*std::move(condition));
        else
            words.shown.push_back(platform::upperCase(word));
    }
    const auto criteria = criteriaOf(joined(Condition::Kind::allOf, std::move(conditions)), true);
    words.criteria = criteria.value_or(std::vector<Criterion>());
    return words;
}

bool narrow(const std::vector<Criterion>& criteria, const std::vector<Criterion>& wider) {
    const auto isAlone = [](const Criterion& criterion) { return !criterion.indented; };
    if (criteria == wider)
        return true;
    return std::ranges::all_of(criteria, isAlone) && std::ranges::all_of(wider, isAlone) &&
           std::ranges::all_of(wider, [&](const Criterion& old) {
               return std::ranges::any_of(criteria, [&](const Criterion& criterion) {
                   return isNarrower(criterion, old);
               });
           });
}

} // namespace ov::modDictation
