// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// What the user does to the entries of the criteria list.

#include "control/criteria/criteria_list.h"
#include "dictation/typed/search_text.h"
#include "support/language/text_ids.h"
#include "widgets/spoken.h"
#include "widgets/text.h"

#include <QClipboard>
#include <QGuiApplication>
#include <algorithm>
#include <set>

namespace ov {

void CriteriaList::load(AskedCriteria kept) {
    history_.forget();
    show(std::move(kept), {});
}

void CriteriaList::replaceAll(AskedCriteria other) {
    change(std::move(other), {});
}

void CriteriaList::chooseAll(bool all) {
    change(AskedCriteria{entries_, all}, selectedRows());
}

bool CriteriaList::addOnce(const std::string& criteriaString) {
    const int present = find(criteriaString);
    CriteriaEntries next = entries_;
    if (present < 0)
        next.push_back({criteriaString});
    change(next, {present < 0 ? static_cast<int>(entries_.size()) : present});
    return present < 0;
}

int CriteriaList::copiedRow() const {
    const int row = selectedRow();
    return row < 0 ? static_cast<int>(entries_.size()) - 1 : row;
}

std::string CriteriaList::copied() const {
    const int row = copiedRow();
    return row < 0 ? std::string() : entries_[static_cast<std::size_t>(row)].criterion;
}

bool CriteriaList::addBeside(const std::string& criteriaString) {
    const int row = copiedRow();
    if (row < 0 || !isInGroup(entries_, row))
        return addOnce(criteriaString);
    const int present = findFor(row, criteriaString);
    if (present < 0)
        change(inserted(entries_, row + 1, {{criteriaString, false, true}}));
    else
        select({present});
    return present < 0;
}

bool CriteriaList::replaceSelected(const std::string& criteriaString) {
    const int row = selectedRow();
    if (row < 0)
        return addOnce(criteriaString);
    const int present = findFor(row, criteriaString);
    if (present >= 0 && present != row) {
        change(without(entries_, {row}), {present > row ? present - 1 : present});
        return false;
    }
    CriteriaEntries next = entries_;
    next[static_cast<std::size_t>(row)].criterion = criteriaString;
    change(std::move(next), {row});
    return true;
}

void CriteriaList::removeSelected() {
    const Rows rows = selectedRows();
    if (rows.empty())
        return;
    CriteriaEntries next = without(entries_, rows);
    const int last = static_cast<int>(next.size()) - 1;
    change(std::move(next), last < 0 ? Rows{} : Rows{std::min(rows.front(), last)});
}

void CriteriaList::changeIndent(bool inward) {
    if (!canIndent(inward))
        return;
    const Rows rows = selectedRows();
    change(indented(entries_, rows, inward), rows);
    widgets::announce(
        *this, widgets::text(inward ? text_id::criteriaGrouped : text_id::criteriaUngrouped));
}

bool CriteriaList::insert(const CriteriaEntries& added) {
    const int current = selectedRow();
    const int before = current < 0 ? static_cast<int>(entries_.size()) : current + 1;
    CriteriaEntries fresh;
    std::set<std::string> freshAlone;
    Rows present;
    for (int row = 0; row < static_cast<int>(added.size()); ++row) {
        const CriteriaEntry& entry = added[static_cast<std::size_t>(row)];
        const bool isAlone =
            !entry.indented && !isInGroup(added, row) && !isInsideGroup(entries_, before);
        const int same = isAlone ? find(entry.criterion) : -1;
        if (same >= 0)
            present.push_back(same);
        else if (!isAlone || freshAlone.insert(entry.criterion).second)
            fresh.push_back(entry);
    }
    ChangedCriteria next = inserted(entries_, before, fresh);
    for (const int row : present)
        next.selected.push_back(row < before ? row : row + static_cast<int>(fresh.size()));
    std::ranges::sort(next.selected);
    change(std::move(next));
    return !fresh.empty();
}

void CriteriaList::copySelected() const {
    std::vector<modDictation::Criterion> criteria;
    for (const CriteriaEntry& entry : only(entries_, selectedRows()))
        criteria.push_back(criterionOf(entry));
    if (!criteria.empty())
        QGuiApplication::clipboard()->setText(
            widgets::toQt(modDictation::writeCriteriaText(criteria)));
}

void CriteriaList::cutSelected() {
    copySelected();
    removeSelected();
}

void CriteriaList::undo() {
    if (auto before = history_.undo(present()))
        showAgain(std::move(*before));
}

void CriteriaList::redo() {
    if (auto after = history_.redo(present()))
        showAgain(std::move(*after));
}

// Selects the first entry that is another one than before.
void CriteriaList::showAgain(AskedCriteria next) {
    const CriteriaEntries& entries = next.entries;
    const auto differs = std::ranges::mismatch(entries_, entries).in2 - entries.begin();
    const int last = static_cast<int>(entries.size()) - 1;
    Rows rows = last < 0 ? Rows{} : Rows{std::min(static_cast<int>(differs), last)};
    if (entries == entries_)
        rows = selectedRows();
    show(std::move(next), rows);
    Q_EMIT changed();
}

void CriteriaList::change(AskedCriteria next, const Rows& selected) {
    if (next == present()) {
        select(selected);
        return;
    }
    history_.keep(present());
    show(std::move(next), selected);
    Q_EMIT changed();
}

void CriteriaList::tick(QTreeWidgetItem& item) {
    const int row = indexOfTopLevelItem(&item);
    const bool leftOut = item.checkState(0) == Qt::Unchecked;
    CriteriaEntries next = entries_;
    next.at(static_cast<std::size_t>(row)).leftOut = leftOut;
    change(std::move(next), selectedRows());
}

// All as the first of them will be.
void CriteriaList::tickSelected() {
    const Rows rows = selectedRows();
    CriteriaEntries next = entries_;
    for (const int row : rows)
        next[static_cast<std::size_t>(row)].leftOut =
            !entries_[static_cast<std::size_t>(rows.front())].leftOut;
    change(std::move(next), rows);
}

// One in a group asks for something else: A is not the same as A or B.
int CriteriaList::find(const std::string& criteriaString) const {
    for (int row = 0; row < static_cast<int>(entries_.size()); ++row)
        if (find(criteriaString, {row, row + 1}) == row && !isInGroup(entries_, row))
            return row;
    return -1;
}

int CriteriaList::find(const std::string& criteriaString, RowRange among) const {
    for (int row = among.first; row < among.end; ++row)
        if (modDictation::isSameCriterion(entries_[static_cast<std::size_t>(row)].criterion,
                                          criteriaString))
            return row;
    return -1;
}

// Where an entry that becomes this would be there twice. Two groups may have the same.
int CriteriaList::findFor(int row, const std::string& criteriaString) const {
    if (find(criteriaString, {row, row + 1}) >= 0)
        return row;
    return isInGroup(entries_, row) ? find(criteriaString, groupAround(entries_, row))
                                    : find(criteriaString);
}

} // namespace ov
