// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QAccessible>

class QModelIndex;

namespace ov {

class AccessibleResults;

// A cell of the result list or the title of a column, as a screen reader has it. Its table owns
// it.
class AccessibleCell final : public QAccessibleInterface, public QAccessibleTableCellInterface {
public:
    // `row` is -1 for the title; `column` is the model's.
    AccessibleCell(AccessibleResults& table, int row, int column)
        : table_(table), row_(row), column_(column) {}

    int row() const { return row_; }

    bool isValid() const override;
    QObject* object() const override { return nullptr; }
    QWindow* window() const override;
    QAccessibleInterface* parent() const override;
    QAccessibleInterface* child(int /*index*/) const override { return nullptr; }
    QAccessibleInterface* childAt(int /*x*/, int /*y*/) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface* /*child*/) const override { return -1; }
    QString text(QAccessible::Text kind) const override;
    void setText(QAccessible::Text /*kind*/, const QString& /*text*/) override {}
    QRect rect() const override;
    QAccessible::Role role() const override;
    QAccessible::State state() const override;
    void* interface_cast(QAccessible::InterfaceType type) override;

    bool isSelected() const override;
    QList<QAccessibleInterface*> columnHeaderCells() const override;
    QList<QAccessibleInterface*> rowHeaderCells() const override { return {}; }
    int columnIndex() const override; // as it is seen; -1 when it is hidden meanwhile
    int rowIndex() const override { return row_; }
    int columnExtent() const override { return 1; }
    int rowExtent() const override { return 1; }
    QAccessibleInterface* table() const override { return parent(); }

private:
    bool isTitle() const { return row_ < 0; }
    QModelIndex index() const;

    AccessibleResults& table_;
    int row_;
    int column_;
};

} // namespace ov
