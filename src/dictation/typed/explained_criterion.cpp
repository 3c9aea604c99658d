// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "dictation/typed/explained_criterion.h"

#include "dictation/field_codes.h"
#include "dictation/field_date.h"
#include "dictation/search/matching.h"
#include "dictation/typed/criterion_text.h"
#include "dictation/typed/quick_text.h"
#include "platform/text.h"
#include "support/language/modLanguage.h"
#include "support/language/text_ids.h"

namespace ov::modDictation {

namespace {

std::string isoDate(std::int64_t day) {
    return platform::formatIsoDate(dateOf({static_cast<std::int32_t>(day), 0, false}));
}

// Empty for a criterion that does not count from today.
std::string relativeDates(const Criterion& criterion, const platform::DateTime& now) {
    if (fieldDefinition(criterion.Field).valueType != ValueType::date)
        return {};
    const NumberRange days = relativeDays(criterion.Operator, now, platform::locale().firstWeekday);
    if (days.first > days.last)
        return {};
    const std::string first = isoDate(days.first);
    return " (" +
           (days.first == days.last
                ? first
                : modLanguage::GetText(text_id::dateRange, {first, isoDate(days.last)})) +
           ')';
}

std::string grouped(std::int64_t number) {
    constexpr std::size_t digits = 3;
    std::string text = std::to_string(number);
    for (std::size_t at = text.size(); at > digits; at -= digits)
        text.insert(at - digits, platform::locale().groupSign);
    return text;
}

} // namespace

std::string explainedCriterion(const Criterion& criterion, bool all,
                               const platform::DateTime& now) {
    const std::string text = GetListedCriterionText(criterion, all);
    return (criterion.indented ? "  " : "") + std::string(platform::trimmed(text)) +
           relativeDates(criterion, now);
}

std::size_t freeWordLength(std::span<const Criterion> criteria, bool all) {
    const std::vector<std::int32_t> fields = fieldsOfFreeWords();
    if (criteria.size() < fields.size())
        return 0;
    const Criterion& first = criteria.front();
    const bool isContained = first.Operator == operator_id::contains;
    const bool inGroup = all == isContained; // any one is enough, or none may be there
    if ((!isContained && first.Operator != operator_id::containsNot) ||
        (first.indented && !inGroup))
        return 0;
    for (std::size_t i = 0; i < fields.size(); ++i)
        if (criteria[i] !=
            Criterion{
                fields[i], first.Operator, first.Value1, {}, i > 0 ? inGroup : first.indented})
            return 0;
    const bool goesOn = criteria.size() > fields.size() && criteria[fields.size()].indented;
    return goesOn && !inGroup ? 0 : fields.size();
}

std::string explainedFreeWord(const Criterion& first, bool all) {
    const std::string text =
        modLanguage::GetText(first.Operator == operator_id::contains ? text_id::anyTextContains
                                                                     : text_id::noTextContains,
                             {first.Value1});
    if (!first.indented)
        return text;
    return "  " + std::string(platform::trimmed(modLanguage::GetText(
                      all ? text_id::orCriterion : text_id::andCriterion, {text})));
}

std::optional<Criterion> criterionOfAssumed(const Criterion& criterion) {
    const std::int32_t assumed = assumedCode(fieldDefinition(criterion.Field).dictationField);
    const bool compares =
        criterion.Operator == operator_id::equal || criterion.Operator == operator_id::notEqual;
    if (assumed == noCode || !compares || prepareCriterion(criterion, {}).code != assumed)
        return std::nullopt;
    return Criterion{criterion.Field, operator_id::isEmpty, {}, {}};
}

std::string assumedNote(const Criterion& criterion, std::string_view counted) {
    const bool isFound = criterion.Operator == operator_id::notEqual;
    const Criterion other{
        criterion.Field, isFound ? operator_id::isNotEmpty : operator_id::isEmpty, {}, {}};
    const std::int32_t code = assumedCode(fieldDefinition(criterion.Field).dictationField);
    return modLanguage::GetText(isFound ? text_id::assumedFoundToo : text_id::assumedNotFound,
                                {GetStatusText(code), typedCriterion(other), counted});
}

std::string countOfAll(std::int64_t matched, std::int64_t tested) {
    return modLanguage::GetText(text_id::countOfAll, {grouped(matched), grouped(tested)});
}

} // namespace ov::modDictation
