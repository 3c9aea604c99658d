// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QAccessibleWidget>
#include <QTableView>
#include <map>
#include <utility>
#include <vector>

namespace ov {

class AccessibleCell;

// The result list as a screen reader has it. Qt's own interface makes an object of each cell that
// it counts and walks through all selected ones, for minutes with a million rows, and tells of
// hidden columns.
//
// Columns are those that can be seen, from left to right. All rows can be asked for; children are
// only the titles and the cells of the rows on the screen, and without rows what stands there
// instead.
class AccessibleResults final : public QAccessibleWidget, public QAccessibleTableInterface {
public:
    explicit AccessibleResults(QTableView& view);
    ~AccessibleResults() override;

    // Every list of hits gets one; may be called again.
    static void install();

    void* interface_cast(QAccessible::InterfaceType type) override;
    int childCount() const override;
    QAccessibleInterface* child(int index) const override;
    int indexOfChild(const QAccessibleInterface* child) const override;
    QAccessibleInterface* childAt(int x, int y) const override;
    QAccessibleInterface* focusChild() const override;
    QAccessible::State state() const override;

    QAccessibleInterface* caption() const override { return nullptr; }
    QAccessibleInterface* summary() const override { return nullptr; }
    QAccessibleInterface* cellAt(int row, int column) const override;
    QAccessibleInterface* titleAt(int column) const;
    int selectedCellCount() const override;
    // Of the rows on the screen.
    QList<QAccessibleInterface*> selectedCells() const override;
    QString columnDescription(int column) const override;
    QString rowDescription(int /*row*/) const override { return {}; }
    int selectedColumnCount() const override { return 0; }
    int selectedRowCount() const override;
    int columnCount() const override;
    int rowCount() const override;
    QList<int> selectedColumns() const override { return {}; }
    QList<int> selectedRows() const override;
    bool isColumnSelected(int /*column*/) const override { return false; }
    bool isRowSelected(int row) const override;
    bool selectRow(int row) override;
    bool selectColumn(int /*column*/) override { return false; }
    bool unselectRow(int row) override;
    bool unselectColumn(int /*column*/) override { return false; }
    void modelChange(QAccessibleTableModelChangeEvent* event) override;

    // The column of the model that stands there; -1 for none.
    int modelColumn(int column) const;
    QTableView& view() const { return view_; }

private:
    struct Rows {
        int first = 0;
        int count = 0;
    };
    bool hasNoRows() const;
    std::vector<int> columns() const;
    Rows rowsOnScreen() const;
    bool select(int row, QItemSelectionModel::SelectionFlags how);
    QAccessibleInterface* made(int row, int modelColumn) const;
    void forget() const;
    void forgetLater() const;

    QTableView& view_;
    // By row, -1 for titles, and the model's column: the objects that were asked for.
    mutable std::map<std::pair<int, int>, QAccessible::Id> made_;
};

} // namespace ov
