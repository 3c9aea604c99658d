// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "dictation/dictation_record.h"
#include "dictation/field_codes.h"
#include "dictation/field_date.h"
#include "dictation/search/matching.h"
#include "platform/text.h"
#include "support/numbers.h"

#include <chrono>

// Criteria made ready for matching: every operator on dates, times and numbers becomes a range.

namespace ov::modDictation {

namespace {

constexpr std::int64_t lowest = std::numeric_limits<std::int64_t>::min();
constexpr std::int64_t highest = std::numeric_limits<std::int64_t>::max();

using Bound = std::optional<std::int64_t>;

// What the operator asks of numbers; the values are those of the criterion. Operators that the
// value types of the three callers do not know match nothing.
NumberRange numberRange(std::int32_t operatorId, Bound a, Bound b) noexcept {
    if (!a)
        return emptyRange;
    switch (operatorId) {
    case operator_id::is:
    case operator_id::equal:
    case operator_id::notEqual:
        return {*a, *a};
    case operator_id::atMost:
        return {lowest, *a};
    case operator_id::atLeast:
        return {*a, highest};
    case operator_id::moreThan:
        return {*a + 1, highest};
    case operator_id::lessThan:
        return {lowest, *a - 1};
    case operator_id::betweenNumbers:
    case operator_id::betweenTimes:
        return b ? NumberRange{*a, *b} : emptyRange;
    default:
        return emptyRange;
    }
}

bool isTimeOperator(std::int32_t operatorId) noexcept {
    return operatorId != operator_id::moreThan && operatorId != operator_id::lessThan &&
           operatorId != operator_id::betweenNumbers;
}

Bound serialDay(std::string_view value) {
    const auto date = platform::parseDate(value);
    return date ? Bound(dayNumber(*date)) : std::nullopt;
}

NumberRange dateRange(const Criterion& criterion, const platform::DateTime& now) {
    const Bound first = serialDay(criterion.Value1);
    switch (criterion.Operator) {
    case operator_id::onDate:
        return first ? NumberRange{*first, *first} : emptyRange;
    case operator_id::onOrAfter:
        return first ? NumberRange{*first, highest} : emptyRange;
    case operator_id::onOrBefore:
        return first ? NumberRange{lowest, *first} : emptyRange;
    case operator_id::betweenDates: {
        const Bound last = serialDay(criterion.Value2);
        return first && last ? NumberRange{*first, *last} : emptyRange;
    }
    default:
        return relativeDays(criterion.Operator, now, platform::locale().firstWeekday);
    }
}

NumberRange timeRange(const Criterion& criterion) {
    const auto first = readSeconds(criterion.Value1);
    const auto second = readSeconds(criterion.Value2);
    if (!isTimeOperator(criterion.Operator))
        return emptyRange;
    return numberRange(criterion.Operator, first ? Bound(*first) : std::nullopt,
                       second ? Bound(*second) : std::nullopt);
}

NumberRange plainNumberRange(const Criterion& criterion) {
    if (criterion.Operator == operator_id::betweenTimes)
        return emptyRange;
    return numberRange(criterion.Operator, leadingInt32(criterion.Value1),
                       leadingInt32(criterion.Value2));
}

std::int32_t codeOr(std::string_view value, std::int32_t whenEmpty) noexcept {
    return value.empty() ? whenEmpty : leadingInt32(value);
}

NumberRange monthDays(const platform::DateTime& now, int monthsAhead) noexcept {
    const std::chrono::year_month month =
        std::chrono::year{now.year} / now.month + std::chrono::months{monthsAhead};
    const platform::DateTime first{static_cast<int>(month.year()),
                                   static_cast<int>(static_cast<unsigned>(month.month())), 1};
    const std::chrono::year_month after = month + std::chrono::months{1};
    const platform::DateTime next{static_cast<int>(after.year()),
                                  static_cast<int>(static_cast<unsigned>(after.month())), 1};
    return {dayNumber(first), dayNumber(next) - 1};
}

} // namespace

NumberRange relativeDays(std::int32_t operatorId, const platform::DateTime& now,
                         int firstWeekday) noexcept {
    const std::int64_t today = dayNumber(now);
    const std::int64_t week =
        today - (weekdayOf(static_cast<std::int32_t>(today)) - firstWeekday + 7) % 7;
    switch (operatorId) {
    case operator_id::yesterday:
        return {today - 1, today - 1};
    case operator_id::today:
        return {today, today};
    case operator_id::tomorrow:
        return {today + 1, today + 1};
    case operator_id::last7Days:
        return {today - 6, today};
    case operator_id::next7Days:
        return {today, today + 6};
    case operator_id::lastWeek:
        return {week - 7, week - 1};
    case operator_id::thisWeek:
        return {week, week + 6};
    case operator_id::nextWeek:
        return {week + 7, week + 13};
    case operator_id::lastMonth:
        return monthDays(now, -1);
    case operator_id::thisMonth:
        return monthDays(now, 0);
    case operator_id::nextMonth:
        return monthDays(now, 1);
    default:
        return emptyRange;
    }
}

PreparedCriterion prepareCriterion(const Criterion& criterion, const platform::DateTime& now) {
    PreparedCriterion prepared;
    prepared.field = criterion.Field;
    prepared.operatorId = criterion.Operator;
    prepared.valueType = fieldDefinition(criterion.Field).valueType;
    switch (prepared.valueType) {
    case ValueType::text:
        prepared.text = platform::upperCase(criterion.Value1);
        break;
    case ValueType::date:
        prepared.range = dateRange(criterion, now);
        break;
    case ValueType::time:
        prepared.range = timeRange(criterion);
        break;
    case ValueType::number:
        prepared.range = plainNumberRange(criterion);
        break;
    case ValueType::status:
        prepared.code = codeOr(criterion.Value1, emptyStatusCode);
        break;
    case ValueType::priority:
        prepared.code = codeOr(criterion.Value1, emptyPriorityCode);
        break;
    case ValueType::code:
    case ValueType::flag:
        prepared.code = leadingInt32(criterion.Value1);
        break;
    case ValueType::marker:
    case ValueType::none:
        break;
    }
    return prepared;
}

} // namespace ov::modDictation
