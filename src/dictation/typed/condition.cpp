// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "dictation/typed/condition.h"

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

} // namespace ov::modDictation
