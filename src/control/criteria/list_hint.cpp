// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "control/criteria/list_hint.h"

#include "widgets/legible.h"

#include <QPainter>
#include <QWidget>

namespace ov {

void paintListHint(QWidget& viewport, const QString& hint) {
    QPainter painter(&viewport);
    const QPalette& colours = viewport.palette();
    painter.setPen(
        widgets::hintColour(colours.color(QPalette::Text), colours.color(QPalette::Base)));
    constexpr int margin = 12;
    painter.drawText(viewport.rect().adjusted(margin, 0, -margin, 0),
                     Qt::AlignCenter | Qt::TextWordWrap, hint);
}

} // namespace ov
