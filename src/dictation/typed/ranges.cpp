// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "dictation/typed/ranges.h"

#include "dictation/field_date.h"

#include <string>

namespace ov::modDictation {

namespace {

namespace op = operator_id;

struct Operators {
    std::int32_t exactly, upTo, from, between;
};

constexpr Operators ofDates = {op::onDate, op::onOrBefore, op::onOrAfter, op::betweenDates};
constexpr Operators ofTimes = {op::equal, op::atMost, op::atLeast, op::betweenTimes};

constexpr NumberRange possibleDays = {-657434, 2958465}; // of the years 100 to 9999

std::string written(ValueType type, std::int64_t number) {
    const auto value = static_cast<std::int32_t>(number);
    return type == ValueType::date ? platform::formatIsoDate(dateOf({value, 0, false}))
                                   : secondsText(value);
}

} // namespace

std::optional<Criterion> rangeCriterion(const FieldDefinition& field, const NumberRange& range) {
    const ValueType type = field.valueType;
    const bool isDate = type == ValueType::date;
    const NumberRange& possible = isDate ? possibleDays : possibleSeconds;
    const Operators& operators = isDate ? ofDates : ofTimes;
    const bool opensDown = range.first == lowestNumber;
    const bool opensUp = range.last == highestNumber;
    if (range.first > range.last || (opensDown && opensUp) ||
        !(opensDown || possible.contains(range.first)) ||
        !(opensUp || possible.contains(range.last)))
        return std::nullopt;
    if (opensDown)
        return Criterion{field.id, operators.upTo, written(type, range.last), {}};
    const std::string first = written(type, range.first);
    if (opensUp)
        return Criterion{field.id, operators.from, first, {}};
    if (range.first == range.last)
        return Criterion{field.id, operators.exactly, first, {}};
    return Criterion{field.id, operators.between, first, written(type, range.last)};
}

} // namespace ov::modDictation
