// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "control/criteria/criteria_entry.h"
#include "dictation/search/criterion.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

// What changes of the criteria list make of its groups. An entry and the indented ones that follow
// it are one; a group that loses its first goes on with the next. What comes between two of a group
// joins it.

namespace ov {

using Rows = std::vector<int>; // of a list, ascending

struct RowRange {
    int first;
    int end; // behind the last
};

struct ChangedCriteria {
    CriteriaEntries entries;
    Rows selected;
};

modDictation::Criterion criterionOf(const CriteriaEntry& entry);

// Those that take part in a search, and entries for them.
std::vector<modDictation::Criterion> criteriaOf(const CriteriaEntries& entries);
CriteriaEntries entriesOf(const std::vector<modDictation::Criterion>& criteria);

RowRange groupAround(const CriteriaEntries& entries, int row);
bool isInGroup(const CriteriaEntries& entries, int row); // with others
// What is put before that row joins a group.
bool isInsideGroup(const CriteriaEntries& entries, int before);

// Those alone, as indented as they were; of each group but the first one the first begins it.
CriteriaEntries only(const CriteriaEntries& entries, const Rows& rows);

// Into the group of the one above, or out of it; the first entry stays.
CriteriaEntries indented(CriteriaEntries entries, const Rows& rows, bool inward);

CriteriaEntries without(const CriteriaEntries& entries, const Rows& rows);

// Before that row, or at the end. The first of a group takes all of it along.
ChangedCriteria moved(const CriteriaEntries& entries, const Rows& rows, int before);

// By one place up (-1) or down (1); whole groups pass whole groups.
ChangedCriteria movedBy(const CriteriaEntries& entries, const Rows& rows, int step);

// Before that row. Where the first is indented it joins the one above, and its group with it.
ChangedCriteria inserted(const CriteriaEntries& entries, int before, const CriteriaEntries& added);

// A list as the lines of a file that tell its groups: criteria strings, those after the first of a
// group behind a blank, those that are left out behind a "-". No more lines than groups need.
std::string groupLines(const CriteriaEntries& entries);

// Groups the entries of a list without groups as such lines tell: where the list is another one by
// now, those nearest to the place. What is left out and came between two of a group is put behind
// it. A group whose criteria do not stand there one after the other is dropped, and a line that is
// no criterion; gives the number of those.
std::size_t applyGroupLines(std::string_view lines, CriteriaEntries& entries);

} // namespace ov
