// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "control/criteria/criteria_groups.h"

#include <algorithm>
#include <utility>

namespace ov {

namespace {

// An entry on its way to another place.
struct Moving {
    CriteriaEntry entry;
    int group; // the row that its group began with
    int from;  // its row; -1: it is new
};
using MovingEntries = std::vector<Moving>;

int sizeOf(const CriteriaEntries& entries) {
    return static_cast<int>(entries.size());
}

bool beginsGroup(const CriteriaEntries& entries, int row) {
    return row == 0 || !entries[static_cast<std::size_t>(row)].indented;
}

MovingEntries takeUp(const CriteriaEntries& entries) {
    MovingEntries moving;
    int group = 0;
    for (int row = 0; row < sizeOf(entries); ++row) {
        group = beginsGroup(entries, row) ? row : group;
        moving.push_back({entries[static_cast<std::size_t>(row)], group, row});
    }
    return moving;
}

CriteriaEntries putDown(const MovingEntries& moving) {
    CriteriaEntries entries;
    for (std::size_t i = 0; i < moving.size(); ++i) {
        entries.push_back(moving[i].entry);
        entries.back().indented = i > 0 && moving[i - 1].group == moving[i].group;
    }
    return entries;
}

bool isInside(const MovingEntries& moving, std::size_t place) {
    return place > 0 && place < moving.size() && moving[place - 1].group == moving[place].group;
}

void put(MovingEntries& moving, std::size_t place, MovingEntries block) {
    if (isInside(moving, place))
        for (Moving& one : block)
            one.group = moving[place].group;
    moving.insert(moving.begin() + static_cast<std::ptrdiff_t>(place), block.begin(), block.end());
}

Rows withTheirGroups(const CriteriaEntries& entries, const Rows& rows) {
    Rows all;
    bool taken = false; // the group, with its first
    for (int row = 0; row < sizeOf(entries); ++row) {
        const bool chosen = std::ranges::binary_search(rows, row);
        taken = beginsGroup(entries, row) ? chosen : taken;
        if (taken || chosen)
            all.push_back(row);
    }
    return all;
}

} // namespace

modDictation::Criterion criterionOf(const CriteriaEntry& entry) {
    modDictation::Criterion criterion = modDictation::ParseCriteriaString(entry.criterion);
    criterion.indented = entry.indented;
    return criterion;
}

std::vector<modDictation::Criterion> criteriaOf(const CriteriaEntries& entries) {
    std::vector<modDictation::Criterion> criteria;
    bool hasBegun = false; // the group, with one that takes part
    for (const CriteriaEntry& entry : entries) {
        hasBegun = hasBegun && entry.indented;
        if (entry.leftOut)
            continue;
        criteria.push_back(criterionOf(entry));
        criteria.back().indented = std::exchange(hasBegun, true);
    }
    return criteria;
}

CriteriaEntries entriesOf(const std::vector<modDictation::Criterion>& criteria) {
    CriteriaEntries entries;
    for (const modDictation::Criterion& c : criteria)
        entries.push_back(
            {modDictation::BuildCriteriaString(c.Field, c.Operator, c.Value1, c.Value2), false,
             c.indented});
    return entries;
}

RowRange groupAround(const CriteriaEntries& entries, int row) {
    RowRange group{row, row + 1};
    while (!beginsGroup(entries, group.first))
        --group.first;
    while (group.end < sizeOf(entries) && !beginsGroup(entries, group.end))
        ++group.end;
    return group;
}

bool isInGroup(const CriteriaEntries& entries, int row) {
    const RowRange group = groupAround(entries, row);
    return group.end - group.first > 1;
}

bool isInsideGroup(const CriteriaEntries& entries, int before) {
    return before < sizeOf(entries) && !beginsGroup(entries, before);
}

CriteriaEntries only(const CriteriaEntries& entries, const Rows& rows) {
    MovingEntries moving = takeUp(entries);
    std::erase_if(moving,
                  [&](const Moving& one) { return !std::ranges::binary_search(rows, one.from); });
    CriteriaEntries chosen = putDown(moving);
    if (!chosen.empty())
        chosen.front().indented = moving.front().entry.indented;
    return chosen;
}

CriteriaEntries indented(CriteriaEntries entries, const Rows& rows, bool inward) {
    for (const int row : rows)
        entries[static_cast<std::size_t>(row)].indented = inward && row > 0;
    return entries;
}

CriteriaEntries without(const CriteriaEntries& entries, const Rows& rows) {
    MovingEntries moving = takeUp(entries);
    std::erase_if(moving,
                  [&](const Moving& one) { return std::ranges::binary_search(rows, one.from); });
    return putDown(moving);
}

ChangedCriteria moved(const CriteriaEntries& entries, const Rows& rows, int before) {
    const Rows block = withTheirGroups(entries, rows);
    MovingEntries rest;
    MovingEntries taken;
    std::size_t place = 0;
    for (Moving& one : takeUp(entries)) {
        if (one.from == before)
            place = rest.size();
        (std::ranges::binary_search(block, one.from) ? taken : rest).push_back(std::move(one));
    }
    put(rest, before < sizeOf(entries) ? place : rest.size(), std::move(taken));
    Rows selected;
    for (std::size_t i = 0; i < rest.size(); ++i)
        if (std::ranges::binary_search(rows, rest[i].from))
            selected.push_back(static_cast<int>(i));
    return {putDown(rest), std::move(selected)};
}

ChangedCriteria movedBy(const CriteriaEntries& entries, const Rows& rows, int step) {
    const Rows block = withTheirGroups(entries, rows);
    if (block.empty() || (step < 0 && block.front() == 0))
        return {entries, rows};
    const bool isWhole =
        std::ranges::any_of(block, [&](int row) { return beginsGroup(entries, row); });
    int before = step < 0 ? block.front() - 1 : block.back() + 2;
    while (isWhole && before < sizeOf(entries) && !beginsGroup(entries, before))
        before += step;
    return moved(entries, rows, before);
}

ChangedCriteria inserted(const CriteriaEntries& entries, int before, const CriteriaEntries& added) {
    MovingEntries moving = takeUp(entries);
    MovingEntries block = takeUp(added);
    const bool joins = before > 0 && !added.empty() && added.front().indented;
    const int above = joins ? moving[static_cast<std::size_t>(before) - 1].group : 0;
    Rows selected;
    for (Moving& one : block) {
        one.group = joins && one.group == 0 ? above : sizeOf(entries) + one.group;
        selected.push_back(before + one.from);
    }
    put(moving, static_cast<std::size_t>(before), std::move(block));
    return {putDown(moving), std::move(selected)};
}

} // namespace ov
