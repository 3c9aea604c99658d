// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "control/results/painting/result_delegate.h"

#include "control/results/result_model.h"
#include "support/language/text_ids.h"
#include "widgets/icons.h"
#include "widgets/legible.h"
#include "widgets/text.h"

#include <QApplication>
#include <QHeaderView>
#include <QHelpEvent>
#include <QPainter>
#include <QTableView>
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

// What a cell does not show of its text, or of where that comes from.
QString hiddenText(const QStyleOptionViewItem& shown, const QModelIndex& index) {
    if (isMark(index) && !index.data(ResultModel::codeIconRole).toString().isEmpty())
        return index.model()
            ->headerData(index.column(), Qt::Horizontal, ResultModel::captionRole)
            .toString();
    if (index.data(ResultModel::assumedRole).toBool())
        return widgets::text(text_id::assumedValue, {widgets::toUtf8(shown.text)});
    return shown.text.isEmpty() || fits(shown) ? QString() : shown.text;
}

// What only stands for nothing stands back, on whichever of the two backgrounds.
void fade(QStyleOptionViewItem& option) {
    const bool isAlternate = option.features.testFlag(QStyleOptionViewItem::Alternate);
    const auto base = isAlternate ? QPalette::AlternateBase : QPalette::Base;
    const auto fadeOn = [&option](QPalette::ColorRole text, QPalette::ColorRole background) {
        for (const auto group : {QPalette::Active, QPalette::Inactive})
            option.palette.setColor(group, text,
                                    widgets::hintColour(option.palette.color(group, text),
                                                        option.palette.color(group, background)));
    };
    fadeOn(QPalette::Text, base);
    fadeOn(QPalette::HighlightedText, QPalette::Highlight);
}

// The same for a picture, in a selected row too.
QIcon faded(const QIcon& icon, const QStyleOptionViewItem& option) {
    constexpr double opacity = 0.65;
    const qreal ratio = option.widget != nullptr ? option.widget->devicePixelRatioF() : 1.0;
    QIcon result;
    for (const QIcon::Mode mode : {QIcon::Normal, QIcon::Selected}) {
        const QPixmap whole = icon.pixmap(option.decorationSize, ratio, mode);
        QPixmap pale(whole.size());
        pale.setDevicePixelRatio(whole.devicePixelRatio());
        pale.fill(Qt::transparent);
        QPainter painter(&pale);
        painter.setOpacity(opacity);
        painter.drawPixmap(0, 0, whole);
        painter.end();
        result.addPixmap(pale, mode);
    }
    return result;
}

} // namespace

ResultDelegate::ResultDelegate(QTableView& list) : QStyledItemDelegate(&list), list_(list) {}

// The column at the left edge of the list, whichever the user moved there.
bool ResultDelegate::isFirst(int column) const {
    const QHeaderView& header = *list_.horizontalHeader();
    int first = 0;
    while (first < header.count() - 1 && header.isSectionHidden(header.logicalIndex(first)))
        ++first;
    return header.logicalIndex(first) == column;
}

void ResultDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
    QStyledItemDelegate::initStyleOption(option, index);
    const bool assumed = index.data(ResultModel::assumedRole).toBool();
    if (assumed)
        fade(*option);
    if (isFirst(index.column()) && index.data(ResultModel::playingRole).toBool()) {
        option->icon = widgets::icon("play");
        option->features |= QStyleOptionViewItem::HasDecoration;
        const int side = option->fontMetrics.height();
        option->decorationSize = QSize(side, side);
        return;
    }
    // To measure a text costs as much as to draw it: most have no icon.
    const QString name = index.data(ResultModel::codeIconRole).toString();
    if (name.isEmpty() || option->text.isEmpty() || (!isMark(index) && fits(*option)))
        return;
    option->icon = widgets::icon(name.toLatin1().constData());
    option->features |= QStyleOptionViewItem::HasDecoration;
    option->features &= ~QStyleOptionViewItem::HasDisplay;
    option->text.clear();
    option->decorationAlignment = Qt::AlignCenter;
    option->decorationPosition = QStyleOptionViewItem::Top; // uses the whole width
    const int side =
        std::min({option->fontMetrics.height(), option->rect.width(), option->rect.height()});
    option->decorationSize = QSize(side, side);
    if (assumed)
        option->icon = faded(option->icon, *option);
}

QSize ResultDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
    if (option.rect.width() > 0)
        return QStyledItemDelegate::sizeHint(option, index);
    QStyleOptionViewItem whole = option;
    QStyledItemDelegate::initStyleOption(&whole, index);
    const QStyle* style = option.widget != nullptr ? option.widget->style() : QApplication::style();
    return style->sizeFromContents(QStyle::CT_ItemViewItem, &whole, {}, option.widget);
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
