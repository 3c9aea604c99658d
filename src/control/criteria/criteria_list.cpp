// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "control/criteria/criteria_list.h"

#include "control/criteria/criterion_delegate.h"
#include "control/criteria/list_hint.h"
#include "control/criteria/relative_dates.h"
#include "dictation/search/criterion.h"
#include "support/language/text_ids.h"
#include "widgets/spoken.h"
#include "widgets/text.h"

#include <QHeaderView>
#include <algorithm>

namespace ov {

using widgets::text;
using widgets::toQt;
using widgets::toUtf8;

namespace {

QString spoken(const QTreeWidgetItem& item) {
    QStringList parts{item.text(0).trimmed()};
    for (const int role : {int(datesRole), int(countRole)})
        if (const QString part = item.data(0, role).toString(); !part.isEmpty())
            parts << part;
    if (item.data(0, emptyingRole).toBool())
        parts << text(text_id::emptyingCriterion);
    return parts.join(QStringLiteral(", "));
}

void describe(QTreeWidgetItem& item) {
    const QString all = spoken(item);
    item.setData(0, Qt::AccessibleTextRole, all);
    item.setToolTip(0, widgets::toolTipText(all));
}

} // namespace

CriteriaList::CriteriaList(QWidget* parent) : QTreeWidget(parent) {
    setObjectName(QStringLiteral("lvSearchCriteria"));
    setRootIsDecorated(false);
    setUniformRowHeights(true);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setDragDropMode(QAbstractItemView::InternalMove);
    setItemDelegate(new CriterionDelegate(this));
    header()->setSectionsClickable(false);
    connect(this, &QTreeWidget::itemDoubleClicked, this, &CriteriaList::editRequested);
    connect(this, &QTreeWidget::itemSelectionChanged, this, &CriteriaList::selectionMoved);
    connect(this, &QTreeWidget::itemChanged, this, [this](QTreeWidgetItem* item) { tick(*item); });
}

std::vector<std::string> CriteriaList::criteria() const {
    std::vector<std::string> all;
    for (const CriteriaEntry& entry : entries_)
        if (!entry.leftOut)
            all.push_back(entry.criterion);
    return all;
}

// ---- Changes

void CriteriaList::load(CriteriaEntries entries) {
    history_.forget();
    show(std::move(entries), {});
}

void CriteriaList::replaceAll(CriteriaEntries entries) {
    change(std::move(entries), {});
}

bool CriteriaList::addOnce(const std::string& criteriaString) {
    const int present = find(criteriaString);
    CriteriaEntries next = entries_;
    if (present < 0)
        next.push_back({criteriaString});
    change(next, {present < 0 ? static_cast<int>(entries_.size()) : present});
    return present < 0;
}

bool CriteriaList::replaceSelected(const std::string& criteriaString) {
    const int row = selectedRow();
    if (row < 0)
        return addOnce(criteriaString);
    const int present = find(criteriaString);
    CriteriaEntries next = entries_;
    if (present >= 0 && present != row) {
        next.erase(next.begin() + row);
        change(std::move(next), {present > row ? present - 1 : present});
        return false;
    }
    next[static_cast<std::size_t>(row)].criterion = criteriaString;
    change(std::move(next), {row});
    return true;
}

void CriteriaList::removeSelected() {
    const Rows rows = selectedRows();
    CriteriaEntries next = entries_;
    for (auto row = rows.rbegin(); row != rows.rend(); ++row)
        next.erase(next.begin() + *row);
    if (rows.empty())
        return;
    const int last = static_cast<int>(next.size()) - 1;
    change(std::move(next), last < 0 ? Rows{} : Rows{std::min(rows.front(), last)});
}

void CriteriaList::undo() {
    if (auto before = history_.undo(entries_))
        showAgain(std::move(*before));
}

void CriteriaList::redo() {
    if (auto after = history_.redo(entries_))
        showAgain(std::move(*after));
}

// Selects the first entry that is another one than before.
void CriteriaList::showAgain(CriteriaEntries next) {
    const auto differs = std::ranges::mismatch(entries_, next).in2 - next.begin();
    const int last = static_cast<int>(next.size()) - 1;
    const Rows rows = last < 0 ? Rows{} : Rows{std::min(static_cast<int>(differs), last)};
    show(std::move(next), rows);
    Q_EMIT changed();
}

void CriteriaList::change(CriteriaEntries next, const Rows& selected) {
    if (next == entries_) {
        select(selected);
        return;
    }
    history_.keep(entries_);
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

void CriteriaList::moveSelected(int before) {
    const Rows rows = selectedRows();
    CriteriaEntries next;
    Rows selected;
    const auto takeSelected = [&] {
        for (const int row : rows) {
            selected.push_back(static_cast<int>(next.size()));
            next.push_back(entries_[static_cast<std::size_t>(row)]);
        }
    };
    for (int row = 0; row < static_cast<int>(entries_.size()); ++row) {
        if (row == before)
            takeSelected();
        if (!std::ranges::binary_search(rows, row))
            next.push_back(entries_[static_cast<std::size_t>(row)]);
    }
    if (before >= static_cast<int>(entries_.size()))
        takeSelected();
    change(std::move(next), selected);
}

void CriteriaList::moveSelectedBy(int step) {
    const Rows rows = selectedRows();
    if (rows.empty() || (step < 0 && rows.front() == 0))
        return;
    moveSelected(step < 0 ? rows.front() - 1 : rows.back() + 2);
}

// ---- Entries as items

CriteriaList::Rows CriteriaList::selectedRows() const {
    Rows rows;
    for (QTreeWidgetItem* item : selectedItems())
        rows.push_back(indexOfTopLevelItem(item));
    std::ranges::sort(rows);
    return rows;
}

int CriteriaList::selectedRow() const {
    QTreeWidgetItem* current = currentItem();
    if (current != nullptr && current->isSelected())
        return indexOfTopLevelItem(current);
    const Rows rows = selectedRows();
    return rows.empty() ? -1 : rows.front();
}

std::string CriteriaList::selected() const {
    const int row = selectedRow();
    return row < 0 ? std::string() : entries_[static_cast<std::size_t>(row)].criterion;
}

int CriteriaList::find(const std::string& criteriaString) const {
    const auto found = std::ranges::find_if(entries_, [&](const CriteriaEntry& entry) {
        return modDictation::isSameCriterion(entry.criterion, criteriaString);
    });
    return found == entries_.end() ? -1 : static_cast<int>(found - entries_.begin());
}

// Items stay, so that one may change while it tells of its tick.
void CriteriaList::show(CriteriaEntries next, const Rows& selected) {
    {
        const QSignalBlocker quiet(this);
        entries_ = std::move(next);
        const int count = static_cast<int>(entries_.size());
        while (topLevelItemCount() > count)
            delete topLevelItem(topLevelItemCount() - 1);
        while (topLevelItemCount() < count)
            new QTreeWidgetItem(this);
        for (int row = 0; row < count; ++row)
            showEntry(row);
        select(selected);
    }
    viewport()->update();
    Q_EMIT selectionMoved();
}

// The criteria string is kept as bytes: a value from an old file may be no UTF-8.
void CriteriaList::showEntry(int row) {
    const CriteriaEntry& entry = entries_[static_cast<std::size_t>(row)];
    QTreeWidgetItem& item = *topLevelItem(row);
    item.setFlags(Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemIsUserCheckable |
                  Qt::ItemIsDragEnabled | Qt::ItemNeverHasChildren);
    item.setData(0, criterionRole, QByteArray::fromStdString(entry.criterion));
    item.setText(0, toQt(modDictation::GetCriterionText(entry.criterion)));
    item.setCheckState(0, entry.leftOut ? Qt::Unchecked : Qt::Checked);
    item.setData(
        0, datesRole,
        relativeDatesText(modDictation::ParseCriteriaString(entry.criterion), platform::now()));
    item.setData(0, countRole, {});
    item.setData(0, emptyingRole, false);
    describe(item);
}

void CriteriaList::select(const Rows& rows) {
    clearSelection();
    if (rows.empty())
        return;
    setCurrentItem(topLevelItem(rows.front()));
    for (const int row : rows)
        topLevelItem(row)->setSelected(true);
    scrollToItem(topLevelItem(rows.front()));
}

void CriteriaList::setCounts(const std::vector<CriterionCount>& counts) {
    const QSignalBlocker quiet(this);
    auto count = counts.begin();
    for (std::size_t row = 0; row < entries_.size(); ++row) {
        QTreeWidgetItem& item = *topLevelItem(static_cast<int>(row));
        const bool known = !entries_[row].leftOut && count != counts.end();
        const CriterionCount shown = known ? *count++ : CriterionCount{};
        item.setData(0, countRole,
                     known ? text(text_id::countOfAll, {widgets::groupedNumber(shown.matched),
                                                        widgets::groupedNumber(shown.tested)})
                           : QString());
        item.setData(0, emptyingRole, shown.emptying);
        describe(item);
    }
    viewport()->update();
}

void CriteriaList::retranslate() {
    setHeaderLabel(text(text_id::criteriaColumn));
    setAccessibleName(text(text_id::criteriaGroup));
    show(entries_, selectedRows());
}

void CriteriaList::paintEvent(QPaintEvent* event) {
    QTreeWidget::paintEvent(event);
    const QString hint = topLevelItemCount() == 0 ? text(text_id::criteriaHint) : QString();
    paintListHint(*viewport(), hint);
    widgets::setSpokenHint(*this, hint);
}

} // namespace ov
