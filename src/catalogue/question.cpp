// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "catalogue/question.h"

#include "dictation/field_codes.h"
#include "dictation/search/matching.h"
#include "dictation/search/operators.h"

#include <algorithm>
#include <array>
#include <limits>
#include <utility>

namespace ov::catalogue {

using modDictation::PreparedCriterion;
using modDictation::ValueType;
namespace operator_id = modDictation::operator_id;

namespace {

// Any text that no value type takes for something.
constexpr const char* anyText = "?";

Test textTest(const PreparedCriterion& criterion) {
    switch (criterion.operatorId) {
    case operator_id::any:
    case operator_id::isNotEmpty:
        return Test::all;
    case operator_id::contains:
        return Test::contains;
    case operator_id::containsNot:
        return Test::containsNot;
    case operator_id::is:
    case operator_id::equal:
        return Test::equals;
    default:
        return Test::none;
    }
}

std::int64_t shifted(std::int64_t value, std::int64_t by) noexcept {
    constexpr std::int64_t far = std::numeric_limits<std::int64_t>::max() / 4;
    return std::clamp(value, -far, far) + by;
}

// Days and lengths. The range is the value itself where one differs from it.
void setRange(const PreparedCriterion& criterion, Condition& condition) {
    const bool isDay = criterion.valueType == ValueType::date;
    const bool differs = criterion.operatorId == operator_id::notEqual && !isDay;
    const std::int64_t by = kept::first - (isDay ? firstDay : 0);
    condition.first = std::max(shifted(criterion.range.first, by), kept::first);
    condition.last = shifted(criterion.range.last, by);
    if (condition.other) // what is only asked to be there
        condition.test = Test::all;
    else if (criterion.range.first <= criterion.range.last)
        condition.test = differs ? Test::outsideRange : Test::range;
}

// Codes are few: each is tried.
void setCodes(const PreparedCriterion& criterion, Condition& condition) {
    using namespace modDictation;
    constexpr std::array codes = {
        status_code::wav,    status_code::roh,      status_code::stop,
        status_code::mai,    priority_code::normal, priority_code::deadline,
        priority_code::high, priority_code::edit,   priority_code::message};
    condition.test = Test::numbers;
    for (const std::int32_t code : codes)
        if (matchValue(codeWord(code), criterion))
            condition.numbers.push_back(kept::first + code);
}

void setMarker(const PreparedCriterion& criterion, Condition& condition) {
    condition.test = Test::numbers;
    if (modDictation::matchValue("D", criterion))
        condition.numbers.push_back(kept::marked);
    if (modDictation::matchValue(anyText, criterion))
        condition.numbers.push_back(kept::notMarked);
    condition.other = false;
}

void setFlags(const PreparedCriterion& criterion, Condition& condition) {
    const bool isKnown = criterion.code >= modDictation::firstFlagCode &&
                         criterion.code <= modDictation::lastFlagCode;
    const bool isSet = modDictation::matchValue("1023", criterion);
    const bool isNotSet = modDictation::matchValue("0", criterion);
    condition.other = true; // odd texts may still begin with a number
    condition.first = isKnown ? 1 << (criterion.code - modDictation::firstFlagCode) : 0;
    if (isSet && isNotSet)
        condition.test = Test::all;
    else if (isSet || isNotSet)
        condition.test = isSet ? Test::bit : Test::noBit;
}

void setTest(const PreparedCriterion& criterion, Condition& condition) {
    switch (criterion.valueType) {
    case ValueType::text:
        condition.test = textTest(criterion);
        condition.text = criterion.text;
        condition.other = false;
        break;
    case ValueType::date:
    case ValueType::time:
        setRange(criterion, condition);
        break;
    case ValueType::status:
    case ValueType::priority:
        setCodes(criterion, condition);
        break;
    case ValueType::marker:
        setMarker(criterion, condition);
        break;
    case ValueType::flag:
        setFlags(criterion, condition);
        break;
    default:
        break;
    }
}

Condition conditionOf(const PreparedCriterion& criterion) {
    const auto column = columnOfField(criterion.field);
    const bool isFolder = criterion.field == modDictation::field_id::folder;
    Condition condition;
    if (!column && !isFolder)
        return condition;
    condition.on = isFolder ? Condition::On::folderText : Condition::On::column;
    condition.column = column.value_or(0);
    condition.absent = modDictation::missingFieldMatch(criterion);
    condition.empty = modDictation::EmptyValueMatch(criterion.operatorId);
    condition.other = modDictation::matchValue(anyText, criterion);
    setTest(criterion, condition);
    return condition;
}

bool isExact(const Condition& condition) noexcept {
    return condition.on != Condition::On::nothing &&
           (condition.on != Condition::On::column ||
            keptColumns()[condition.column].keeping != Keeping::flags);
}

bool isNarrow(const Condition& condition) noexcept {
    const bool asksForFew = condition.test == Test::equals || condition.test == Test::contains ||
                            condition.test == Test::range;
    return condition.on == Condition::On::column && keptColumns()[condition.column].hasIndex &&
           asksForFew && !condition.absent && !condition.empty && !condition.other;
}

bool isNarrowGroup(const std::vector<Condition>& group, bool all) noexcept {
    return all ? std::ranges::any_of(group, isNarrow) : std::ranges::all_of(group, isNarrow);
}

} // namespace

bool Question::isNarrow() const noexcept {
    const auto narrow = [this](const auto& group) { return isNarrowGroup(group, !all); };
    return !groups.empty() &&
           (all ? std::ranges::any_of(groups, narrow) : std::ranges::all_of(groups, narrow));
}

Question questionOf(const modDictation::Search& search, const platform::DateTime& now) {
    constexpr std::size_t mostConditions = 200; // beyond, databases refuse; all is looked at then
    Question question{search.root, search.depth, search.all, {}, true};
    if (search.criteria.size() > mostConditions)
        return {search.root, search.depth, true, {}, false};
    for (const modDictation::Criterion& criterion : search.criteria) {
        Condition condition = conditionOf(modDictation::prepareCriterion(criterion, now));
        question.isExact = question.isExact && isExact(condition);
        if (!criterion.indented || question.groups.empty())
            question.groups.emplace_back();
        question.groups.back().push_back(std::move(condition));
    }
    return question;
}

} // namespace ov::catalogue
