// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "control/results/result_delegate.h"

#include "control/results/result_model.h"
#include "widgets/icons.h"
#include "widgets/text.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QHelpEvent>
#include <QToolTip>

namespace ov {

namespace {

bool fits(const QStyleOptionViewItem& option) {
    const QStyle* style = option.widget != nullptr ? option.widget->style() : QApplication::style();
    const int margin =
        2 * (style->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, option.widget) + 1);
    return option.fontMetrics.horizontalAdvance(option.text) + margin <= option.rect.width();
}

// A marker's text is a letter that only the host understands.
bool isMark(const QModelIndex& index) {
    const auto field =
        index.model()->headerData(index.column(), Qt::Horizontal, ResultModel::fieldRole);
    return modDictation::fieldDefinition(field.toInt()).valueType ==
           modDictation::ValueType::marker;
}

// What a cell does not show of its text.
QString hiddenText(const QStyleOptionViewItem& shown, const QModelIndex& index) {
    if (isMark(index) && !index.data(ResultModel::codeIconRole).toString().isEmpty())
        return index.model()
            ->headerData(index.column(), Qt::Horizontal, ResultModel::captionRole)
            .toString();
    return shown.text.isEmpty() || fits(shown) ? QString() : shown.text;
}

} // namespace

void ResultDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
    QStyledItemDelegate::initStyleOption(option, index);
    if (option->text.isEmpty() || (fits(*option) && !isMark(index)))
        return;
    const QString name = index.data(ResultModel::codeIconRole).toString();
    if (name.isEmpty())
        return;
    option->icon = widgets::icon(name.toLatin1().constData());
    option->features |= QStyleOptionViewItem::HasDecoration;
    option->features &= ~QStyleOptionViewItem::HasDisplay;
    option->text.clear();
    option->decorationAlignment = Qt::AlignCenter;
    option->decorationPosition = QStyleOptionViewItem::Top; // uses the whole width
    const int side = std::min({16, option->rect.width(), option->rect.height()});
    option->decorationSize = QSize(side, side);
}

bool ResultDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view,
                               const QStyleOptionViewItem& option, const QModelIndex& index) {
    if (event->type() != QEvent::ToolTip)
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    QStyleOptionViewItem shown = option;
    QStyledItemDelegate::initStyleOption(&shown, index);
    QToolTip::showText(event->globalPos(), widgets::toolTipText(hiddenText(shown, index)), view,
                       view->visualRect(index));
    return true;
}

} // namespace ov
