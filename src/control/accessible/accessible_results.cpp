// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "control/accessible/accessible_results.h"

#include "control/accessible/accessible_cell.h"
#include "control/results/result_list.h"

#include <QHeaderView>
#include <QTimer>
#include <algorithm>
#include <utility>

namespace ov {

namespace {

// More objects than a screen has cells, so that those on it are never forgotten for each other.
constexpr std::size_t mostMade = 20000;

QAccessibleInterface* makeResults(const QString& className, QObject* object) {
    auto* view =
        className == QLatin1String("ov::ResultList") ? qobject_cast<QTableView*>(object) : nullptr;
    return view != nullptr ? new AccessibleResults(*view) : nullptr;
}

} // namespace

AccessibleResults::AccessibleResults(QTableView& view)
    : QAccessibleWidget(&view, QAccessible::Table), view_(view) {}

AccessibleResults::~AccessibleResults() {
    forget();
}

void AccessibleResults::install() {
    static const bool installed = [] {
        QAccessible::installFactory(&makeResults);
        return true;
    }();
    static_cast<void>(installed);
}

void* AccessibleResults::interface_cast(QAccessible::InterfaceType type) {
    if (type == QAccessible::TableInterface)
        return static_cast<QAccessibleTableInterface*>(this);
    return QAccessibleWidget::interface_cast(type);
}

// ---- Children: the titles, then the cells on the screen, or what an empty list says

bool AccessibleResults::hasNoRows() const {
    return rowCount() == 0;
}

int AccessibleResults::childCount() const {
    return (rowsOnScreen().count + 1) * columnCount() + (hasNoRows() ? 1 : 0);
}

QAccessibleInterface* AccessibleResults::child(int index) const {
    const int columns = columnCount();
    if (index < 0 || columns == 0)
        return nullptr;
    if (index < columns)
        return titleAt(index);
    const Rows rows = rowsOnScreen();
    const int row = index / columns - 1;
    if (row < rows.count)
        return cellAt(rows.first + row, index % columns);
    return hasNoRows() && index == childCount() - 1
               ? QAccessible::queryAccessibleInterface(view_.viewport())
               : nullptr;
}

int AccessibleResults::indexOfChild(const QAccessibleInterface* child) const {
    if (child->object() == view_.viewport())
        return hasNoRows() ? childCount() - 1 : -1;
    const auto* cell = dynamic_cast<const AccessibleCell*>(child);
    if (cell == nullptr)
        return -1;
    const Rows rows = rowsOnScreen();
    const int row = cell->row() < 0 ? 0 : cell->row() - rows.first + 1;
    const int column = cell->columnIndex();
    const bool onScreen = column >= 0 && (cell->row() < 0 || (row > 0 && row <= rows.count));
    return onScreen ? row * columnCount() + column : -1;
}

QAccessibleInterface* AccessibleResults::childAt(int x, int y) const {
    const QPoint place = view_.viewport()->mapFromGlobal(QPoint(x, y));
    if (const QModelIndex index = view_.indexAt(place); index.isValid())
        return made(index.row(), index.column());
    const QHeaderView& titles = *view_.horizontalHeader();
    const QPoint inTitles = titles.viewport()->mapFromGlobal(QPoint(x, y));
    const int column = titles.logicalIndexAt(inTitles);
    return column >= 0 && titles.viewport()->rect().contains(inTitles) ? made(-1, column) : nullptr;
}

QAccessibleInterface* AccessibleResults::focusChild() const {
    const QModelIndex current = view_.currentIndex();
    if (!view_.hasFocus() || !current.isValid())
        return nullptr;
    return made(current.row(), current.column());
}

// Who listens asks for cells by row and column and not for all children.
QAccessible::State AccessibleResults::state() const {
    QAccessible::State state = QAccessibleWidget::state();
    state.multiSelectable = true;
    return state;
}

// ---- The table

std::vector<int> AccessibleResults::columns() const {
    const QHeaderView& titles = *view_.horizontalHeader();
    std::vector<int> columns;
    for (int place = 0; place < titles.count(); ++place)
        if (const int column = titles.logicalIndex(place); !titles.isSectionHidden(column))
            columns.push_back(column);
    return columns;
}

int AccessibleResults::modelColumn(int column) const {
    const std::vector<int> all = columns();
    return column >= 0 && column < static_cast<int>(all.size())
               ? all[static_cast<std::size_t>(column)]
               : -1;
}

int AccessibleResults::columnCount() const {
    return static_cast<int>(columns().size());
}

int AccessibleResults::rowCount() const {
    return view_.model()->rowCount();
}

AccessibleResults::Rows AccessibleResults::rowsOnScreen() const {
    const int first = view_.rowAt(0);
    if (first < 0)
        return {};
    const int last = view_.rowAt(view_.viewport()->height() - 1);
    return {first, (last < 0 ? rowCount() - 1 : last) - first + 1};
}

QAccessibleInterface* AccessibleResults::cellAt(int row, int column) const {
    const int inModel = modelColumn(column);
    return inModel >= 0 && row >= 0 && row < rowCount() ? made(row, inModel) : nullptr;
}

QAccessibleInterface* AccessibleResults::titleAt(int column) const {
    const int inModel = modelColumn(column);
    return inModel >= 0 ? made(-1, inModel) : nullptr;
}

QString AccessibleResults::columnDescription(int column) const {
    const QAccessibleInterface* title = titleAt(column);
    return title != nullptr ? title->text(QAccessible::Name) : QString();
}

int AccessibleResults::selectedRowCount() const {
    return static_cast<const ResultList&>(view_).selected().count();
}

int AccessibleResults::selectedCellCount() const {
    return selectedRowCount() * columnCount();
}

QList<int> AccessibleResults::selectedRows() const {
    QList<int> rows;
    static_cast<const ResultList&>(view_).selected().forEachRow([&rows](int row) {
        rows.append(row);
        return true;
    });
    return rows;
}

QList<QAccessibleInterface*> AccessibleResults::selectedCells() const {
    QList<QAccessibleInterface*> cells;
    const Rows rows = rowsOnScreen();
    for (int row = rows.first; row < rows.first + rows.count; ++row)
        for (int column = 0; isRowSelected(row) && column < columnCount(); ++column)
            cells.append(cellAt(row, column));
    return cells;
}

bool AccessibleResults::isRowSelected(int row) const {
    return view_.selectionModel()->isRowSelected(row);
}

bool AccessibleResults::select(int row, QItemSelectionModel::SelectionFlags how) {
    if (row < 0 || row >= rowCount())
        return false;
    view_.selectionModel()->select(view_.model()->index(row, 0), how | QItemSelectionModel::Rows);
    return true;
}

bool AccessibleResults::selectRow(int row) {
    return select(row, QItemSelectionModel::Select);
}

bool AccessibleResults::unselectRow(int row) {
    return select(row, QItemSelectionModel::Deselect);
}

// ---- The objects

void AccessibleResults::modelChange(QAccessibleTableModelChangeEvent* event) {
    if (event->modelChangeType() != QAccessibleTableModelChangeEvent::DataChanged)
        forget();
}

QAccessibleInterface* AccessibleResults::made(int row, int modelColumn) const {
    const std::pair key(row, modelColumn);
    if (const auto known = made_.find(key); known != made_.end())
        return QAccessible::accessibleInterface(known->second);
    if (made_.size() == mostMade)
        forgetLater();
    auto* cell = new AccessibleCell(const_cast<AccessibleResults&>(*this), row, modelColumn);
    made_[key] = QAccessible::registerAccessibleInterface(cell);
    return cell;
}

// An answer that is being made may hold some of them.
void AccessibleResults::forgetLater() const {
    const QAccessible::Id own = QAccessible::uniqueId(const_cast<AccessibleResults*>(this));
    QTimer::singleShot(0, &view_, [own] {
        if (const auto* results =
                dynamic_cast<AccessibleResults*>(QAccessible::accessibleInterface(own)))
            results->forget();
    });
}

void AccessibleResults::forget() const {
    for (const auto& [key, id] : std::exchange(made_, {}))
        QAccessible::deleteAccessibleInterface(id);
}

} // namespace ov
