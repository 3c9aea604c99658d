// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QStyledItemDelegate>

class QTableView;

namespace ov {

// Draws the cells of the result list: a code as its picture where its text does not fit, and the
// row of the dictation that is in the player with a mark. The whole text is the tooltip of every
// cell that does not show it.
class ResultDelegate final : public QStyledItemDelegate {
    Q_OBJECT

public:
    // The list, which owns it.
    explicit ResultDelegate(QTableView& list);

    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;

    // Without a width to stay in, of the whole text, also where a picture would stand for it.
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;

private:
    bool isFirst(int column) const;

    const QTableView& list_;
};

} // namespace ov
