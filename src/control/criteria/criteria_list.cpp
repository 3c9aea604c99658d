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
#include <utility>

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

// ---- Entries as items

Rows CriteriaList::selectedRows() const {
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

// Items stay, so that one may change while it tells of its tick.
void CriteriaList::show(AskedCriteria next, const Rows& selected) {
    const bool isOtherChoice = std::exchange(all_, next.all) != next.all;
    {
        const QSignalBlocker quiet(this);
        entries_ = std::move(next.entries);
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
    if (isOtherChoice)
        Q_EMIT allChanged(all_);
    Q_EMIT selectionMoved();
}

// The criteria string is kept as bytes: a value from an old file may be no UTF-8.
void CriteriaList::showEntry(int row) {
    const CriteriaEntry& entry = entries_[static_cast<std::size_t>(row)];
    QTreeWidgetItem& item = *topLevelItem(row);
    item.setFlags(Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemIsUserCheckable |
                  Qt::ItemIsDragEnabled | Qt::ItemNeverHasChildren);
    item.setData(0, criterionRole, QByteArray::fromStdString(entry.criterion));
    item.setCheckState(0, entry.leftOut ? Qt::Unchecked : Qt::Checked);
    item.setData(
        0, datesRole,
        relativeDatesText(modDictation::ParseCriteriaString(entry.criterion), platform::now()));
    item.setData(0, countRole, {});
    item.setData(0, emptyingRole, false);
    item.setText(0, toQt(modDictation::GetListedCriterionText(criterionOf(entry), all_)));
    item.setData(0, indentedRole, entry.indented);
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
    show(present(), selectedRows());
}

void CriteriaList::paintEvent(QPaintEvent* event) {
    QTreeWidget::paintEvent(event);
    const QString hint = topLevelItemCount() == 0 ? text(text_id::criteriaHint) : QString();
    paintListHint(*viewport(), hint);
    widgets::setSpokenHint(*this, hint);
}

} // namespace ov
