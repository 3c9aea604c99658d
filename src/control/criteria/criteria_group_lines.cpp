// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// The groups of the criteria list as they are kept.

#include "control/criteria/criteria_groups.h"
#include "support/text_lines.h"

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <utility>

namespace ov {

namespace {

constexpr char insideMark = ' ';
constexpr char leftOutMark = '-';

// What lines tell of a group, or of an entry alone.
struct ToldGroup {
    std::ptrdiff_t row; // of its first, when it was written
    CriteriaEntries members;
};

using EntryPlace = CriteriaEntries::iterator;

CriteriaEntry entryOfLine(std::string_view line) {
    CriteriaEntry entry;
    entry.indented = line.starts_with(insideMark);
    line.remove_prefix(entry.indented ? 1 : 0);
    entry.leftOut = line.starts_with(leftOutMark);
    line.remove_prefix(entry.leftOut ? 1 : 0);
    entry.criterion = line;
    return entry;
}

std::vector<ToldGroup> toldGroups(std::string_view lines) {
    std::vector<ToldGroup> groups;
    std::ptrdiff_t row = 0;
    forEachLine(lines, [&](std::string_view line) {
        if (line.empty())
            return;
        CriteriaEntry entry = entryOfLine(line);
        if (!entry.indented || groups.empty())
            groups.push_back({row, {}});
        groups.back().members.push_back(std::move(entry));
        ++row;
    });
    return groups;
}

bool isSame(const CriteriaEntry& one, const CriteriaEntry& other) {
    return one.leftOut == other.leftOut && one.criterion == other.criterion;
}

// Behind the last of the members that stand from `first` on one after the other, but for others
// that are left out; `first` when they do not.
EntryPlace endOf(const CriteriaEntries& members, EntryPlace first, EntryPlace end) {
    auto member = members.begin();
    for (EntryPlace entry = first; entry != end; ++entry) {
        if (isSame(*entry, *member)) {
            if (++member == members.end())
                return entry + 1;
        } else if (member == members.begin() || !entry->leftOut)
            return first;
    }
    return first;
}

// Joins those behind `from` that stand nearest to where the group stood; others among them come
// behind it. Gives where the group ends; nothing when it is not there.
std::optional<EntryPlace> join(const ToldGroup& group, CriteriaEntries& entries, EntryPlace from) {
    const auto distance = [&](EntryPlace first) {
        return std::abs(first - entries.begin() - group.row);
    };
    std::optional<EntryPlace> nearest;
    for (EntryPlace first = from; first != entries.end(); ++first)
        if (endOf(group.members, first, entries.end()) != first &&
            (!nearest || distance(first) < distance(*nearest)))
            nearest = first;
    if (!nearest)
        return std::nullopt;
    const EntryPlace end = endOf(group.members, *nearest, entries.end());
    EntryPlace entry = *nearest;
    for (const CriteriaEntry& member : group.members) {
        while (!isSame(*entry, member))
            std::rotate(entry, entry + 1, end);
        entry->indented = entry != *nearest;
        ++entry;
    }
    return entry;
}

} // namespace

std::string groupLines(const CriteriaEntries& entries) {
    std::string lines;
    std::size_t needed = 0;
    for (const CriteriaEntry& entry : entries) {
        if (entry.indented)
            lines.push_back(insideMark);
        if (entry.leftOut)
            lines.push_back(leftOutMark);
        lines.append(entry.criterion).append("\r\n");
        needed = entry.indented ? lines.size() : needed;
    }
    lines.resize(needed);
    return lines;
}

std::size_t applyGroupLines(std::string_view lines, CriteriaEntries& entries) {
    std::size_t dropped = 0;
    EntryPlace from = entries.begin();
    for (const ToldGroup& group : toldGroups(lines)) {
        bool isTaken = std::ranges::all_of(group.members, modDictation::isCriteriaString,
                                           &CriteriaEntry::criterion);
        if (isTaken && group.members.size() > 1) {
            const auto end = join(group, entries, from);
            isTaken = end.has_value();
            from = end.value_or(from);
        }
        dropped += isTaken ? 0 : 1;
    }
    return dropped;
}

} // namespace ov
