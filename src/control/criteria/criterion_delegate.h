// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QStyledItemDelegate>

namespace ov {

// What an entry of the criteria list has beside its text.
enum CriterionRole {
    criterionRole = Qt::UserRole, // the criteria string, as bytes
    datesRole,                    // what a relative date means today
    countRole,                    // "1,204 of 20,113"; empty when not known
    emptyingRole,                 // true: no dictation meets it
    indentedRole,                 // true: it is in the group of the one above
};

// Draws them: indented or not, the dates after the text, the count at the right. One that has the
// keyboard without being selected gets a frame alone.
class CriterionDelegate final : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;

private:
    // Gives back where the text must end.
    int paintCount(QPainter& painter, const QStyleOptionViewItem& option,
                   const QModelIndex& index) const;
};

} // namespace ov
