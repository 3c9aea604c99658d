// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "control/accessible/accessible_cell.h"

#include "control/accessible/accessible_results.h"
#include "control/results/result_model.h"

#include <QHeaderView>

namespace ov {

QModelIndex AccessibleCell::index() const {
    return table_.view().model()->index(row_, column_);
}

bool AccessibleCell::isValid() const {
    return isTitle() ? column_ < table_.view().model()->columnCount() : index().isValid();
}

QWindow* AccessibleCell::window() const {
    return table_.window();
}

QAccessibleInterface* AccessibleCell::parent() const {
    return &table_;
}

// All of a cell that is cut off, the words of a code that is shown as a picture, and what else the
// model has to say of it.
QString AccessibleCell::text(QAccessible::Text kind) const {
    if (kind != QAccessible::Name && (kind != QAccessible::Value || isTitle()))
        return {};
    const QAbstractItemModel& model = *table_.view().model();
    if (isTitle())
        return model.headerData(column_, Qt::Horizontal, ResultModel::captionRole).toString();
    const QString spoken = index().data(Qt::AccessibleTextRole).toString();
    return spoken.isEmpty() ? index().data().toString() : spoken;
}

QRect AccessibleCell::rect() const {
    const QTableView& view = table_.view();
    const QHeaderView& titles = *view.horizontalHeader();
    const QWidget* area = isTitle() ? titles.viewport() : view.viewport();
    const QRect place = isTitle() ? QRect(titles.sectionViewportPosition(column_), 0,
                                          titles.sectionSize(column_), titles.height())
                                  : view.visualRect(index());
    return {area->mapToGlobal(place.topLeft()), place.size()};
}

QAccessible::Role AccessibleCell::role() const {
    return isTitle() ? QAccessible::ColumnHeader : QAccessible::Cell;
}

QAccessible::State AccessibleCell::state() const {
    const QTableView& view = table_.view();
    QAccessible::State state;
    state.invisible = !view.isVisible();
    if (isTitle())
        return state;
    state.offscreen = !view.viewport()->rect().intersects(view.visualRect(index()));
    state.selectable = true;
    state.focusable = true;
    state.selected = isSelected();
    state.focused = view.hasFocus() && view.currentIndex() == index();
    return state;
}

void* AccessibleCell::interface_cast(QAccessible::InterfaceType type) {
    return type == QAccessible::TableCellInterface
               ? static_cast<QAccessibleTableCellInterface*>(this)
               : nullptr;
}

bool AccessibleCell::isSelected() const {
    return !isTitle() && table_.isRowSelected(row_);
}

QList<QAccessibleInterface*> AccessibleCell::columnHeaderCells() const {
    return isTitle() ? QList<QAccessibleInterface*>() : QList{table_.titleAt(columnIndex())};
}

int AccessibleCell::columnIndex() const {
    const int columns = table_.columnCount();
    for (int column = 0; column < columns; ++column)
        if (table_.modelColumn(column) == column_)
            return column;
    return -1;
}

} // namespace ov
