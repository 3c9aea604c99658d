// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "dictation/field_date.h"
#include "dictation/search/matching.h"
#include "dictation/typed/condition.h"
#include "dictation/typed/ranges.h"

#include <array>
#include <utility>

namespace ov::modDictation {

namespace {

namespace op = operator_id;

constexpr std::array<std::pair<std::int32_t, std::int32_t>, 4> opposites = {
    {{op::contains, op::containsNot},
     {op::isEmpty, op::isNotEmpty},
     {op::equal, op::notEqual},
     {op::marked, op::notMarked}}};

std::optional<std::int32_t> oppositeOperator(std::int32_t operatorId) {
    for (const auto& [one, other] : opposites) {
        if (operatorId == one)
            return other;
        if (operatorId == other)
            return one;
    }
    return std::nullopt;
}

// Below, above, or without any.
std::optional<Condition> outside(const FieldDefinition& field, const NumberRange& range) {
    std::vector<Condition> parts;
    const auto add = [&](NumberRange part) {
        if (const auto criterion = rangeCriterion(field, part))
            parts.push_back(conditionOf(*criterion));
    };
    if (range.first > range.last)
        return std::nullopt;
    if (range.first != lowestNumber)
        add({lowestNumber, range.first - 1});
    if (range.last != highestNumber)
        add({range.last + 1, highestNumber});
    parts.push_back(conditionOf({field.id, op::isEmpty, {}, {}}));
    return joined(Condition::Kind::anyOf, std::move(parts));
}

std::optional<Condition> oppositeOf(const Criterion& criterion, const platform::DateTime& now) {
    const FieldDefinition& field = fieldDefinition(criterion.Field);
    if (const auto other = oppositeOperator(criterion.Operator)) {
        Criterion changed = criterion;
        changed.Operator = *other;
        return conditionOf(std::move(changed));
    }
    if (field.valueType != ValueType::date && field.valueType != ValueType::time)
        return std::nullopt;
    return outside(field, prepareCriterion(criterion, now).range);
}

} // namespace

std::optional<Condition> opposite(const Condition& condition, const platform::DateTime& now) {
    if (condition.kind == Condition::Kind::criterion)
        return oppositeOf(condition.criterion, now);
    Condition result{condition.kind == Condition::Kind::anyOf ? Condition::Kind::allOf
                                                              : Condition::Kind::anyOf};
    for (const Condition& part : condition.parts) {
        auto other = opposite(part, now);
        if (!other)
            return std::nullopt;
        result.parts.push_back(*std::move(other));
    }
    return result;
}

} // namespace ov::modDictation
