// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "control/criteria/list_hint.h"

#include <QPainter>
#include <QWidget>

namespace ov {

void paintListHint(QWidget& viewport, const QString& hint) {
    QPainter painter(&viewport);
    painter.setPen(viewport.palette().color(QPalette::Disabled, QPalette::Text));
    constexpr int margin = 12;
    painter.drawText(viewport.rect().adjusted(margin, margin, -margin, -margin),
                     Qt::AlignCenter | Qt::TextWordWrap, hint);
}

} // namespace ov
