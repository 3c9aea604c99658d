// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "control/criteria/criterion_delegate.h"

#include "widgets/icons.h"

#include <QPainter>

namespace ov {

namespace {

constexpr int gap = 6;

void paintFrame(QPainter& painter, const QStyleOptionViewItem& option) {
    const bool selected = option.state.testFlag(QStyle::State_Selected);
    painter.setPen(QPen(option.palette.color(selected ? QPalette::HighlightedText : QPalette::Text),
                        1, Qt::DotLine));
    painter.drawRect(option.rect.adjusted(0, 0, -1, -1));
}

} // namespace

void CriterionDelegate::initStyleOption(QStyleOptionViewItem* option,
                                        const QModelIndex& index) const {
    QStyledItemDelegate::initStyleOption(option, index);
    option->state.setFlag(QStyle::State_HasFocus, false); // some styles fill it as if selected
    if (const QString dates = index.data(datesRole).toString(); !dates.isEmpty())
        option->text = option->text.trimmed() + QStringLiteral(": ") + dates;
    if (option->features.testFlag(QStyleOptionViewItem::HasCheckIndicator))
        option->font.setItalic(option->checkState == Qt::Unchecked);
    if (index.data(indentedRole).toBool())
        option->rect.setLeft(option->rect.left() + option->fontMetrics.height() * 3 / 2);
}

void CriterionDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                              const QModelIndex& index) const {
    painter->save();
    QStyleOptionViewItem cell = option;
    initStyleOption(&cell, index);
    const QWidget* widget = option.widget;
    QStyleOptionViewItem whole = cell;
    whole.rect = option.rect;
    widget->style()->drawPrimitive(QStyle::PE_PanelItemViewItem, &whole, painter, widget);
    cell.rect.setRight(paintCount(*painter, cell, index));
    widget->style()->drawControl(QStyle::CE_ItemViewItem, &cell, painter, widget);
    if (option.state.testFlag(QStyle::State_HasFocus))
        paintFrame(*painter, option);
    painter->restore();
}

int CriterionDelegate::paintCount(QPainter& painter, const QStyleOptionViewItem& option,
                                  const QModelIndex& index) const {
    const QString count = index.data(countRole).toString();
    if (count.isEmpty())
        return option.rect.right();
    QRect place = option.rect.adjusted(gap, 0, -gap, 0);
    place.setLeft(
        std::max(place.left(), place.right() - option.fontMetrics.horizontalAdvance(count)));
    const bool selected = option.state.testFlag(QStyle::State_Selected);
    painter.setFont(option.widget->font());
    painter.setPen(option.palette.color(selected ? QPalette::HighlightedText : QPalette::Text));
    painter.drawText(place, Qt::AlignRight | Qt::AlignVCenter, count);
    if (!index.data(emptyingRole).toBool())
        return place.left() - gap;
    const int side = option.fontMetrics.height();
    const QRect icon(place.left() - side - gap, option.rect.center().y() - side / 2, side, side);
    widgets::icon("notice").paint(&painter, icon);
    return icon.left() - gap;
}

} // namespace ov
