// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "dictation/typed/condition.h"

#include "dictation/field_date.h"
#include "dictation/search/matching.h"
#include "dictation/typed/ranges.h"

#include <array>
#include <utility>

namespace ov::modDictation {

namespace {

// Groups of criteria; within one they are joined in one way, the groups in the other.
using Groups = std::vector<std::vector<Criterion>>;

std::size_t sizeOf(const Groups& groups) {
    std::size_t size = 0;
    for (const auto& group : groups)
        size += group.size();
    return size;
}

// Each of the one with each of the other.
std::optional<Groups> crossed(const Groups& left, const Groups& right) {
    if (sizeOf(left) * right.size() + sizeOf(right) * left.size() > mostCriteria)
        return std::nullopt;
    Groups groups;
    for (const auto& a : left)
        for (const auto& b : right) {
            groups.push_back(a);
            groups.back().insert(groups.back().end(), b.begin(), b.end());
        }
    return groups;
}

std::optional<Groups> groupsOf(const Condition& condition, Condition::Kind ofGroups) {
    if (condition.kind == Condition::Kind::criterion)
        return Groups{{condition.criterion}};
    const bool besideEachOther = condition.kind == ofGroups;
    Groups all = besideEachOther ? Groups{} : Groups{{}};
    for (const Condition& part : condition.parts) {
        auto groups = groupsOf(part, ofGroups);
        if (groups && !besideEachOther)
            groups = crossed(all, *groups);
        if (!groups || sizeOf(all) + sizeOf(*groups) > mostCriteria * 2)
            return std::nullopt;
        if (besideEachOther)
            all.insert(all.end(), groups->begin(), groups->end());
        else
            all = *std::move(groups);
    }
    return sizeOf(all) <= mostCriteria ? std::optional(std::move(all)) : std::nullopt;
}

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

Condition conditionOf(Criterion criterion) {
    return {Condition::Kind::criterion, std::move(criterion), {}};
}

Condition joined(Condition::Kind kind, std::vector<Condition> parts) {
    if (parts.size() == 1)
        return std::move(parts.front());
    return {kind, {}, std::move(parts)};
}

std::optional<std::vector<Criterion>> criteriaOf(const Condition& condition, bool all) {
    const auto groups = groupsOf(condition, all ? Condition::Kind::allOf : Condition::Kind::anyOf);
    if (!groups)
        return std::nullopt;
    std::vector<Criterion> criteria;
    for (const auto& group : *groups)
        for (std::size_t i = 0; i < group.size(); ++i) {
            criteria.push_back(group[i]);
            criteria.back().indented = i > 0;
        }
    return criteria;
}

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
