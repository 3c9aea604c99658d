// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "widgets/first_size.h"

#include <QScreen>
#include <QStyle>
#include <QWidget>

namespace ov::widgets {

void resizeOnScreen(QWidget& window, QSize comfortable) {
    const QWidget* owner = window.parentWidget() != nullptr ? window.parentWidget() : &window;
    QSize room = owner->screen()->availableSize();
    room.rheight() -= window.style()->pixelMetric(QStyle::PM_TitleBarHeight);
    window.resize(comfortable.expandedTo(window.sizeHint()).boundedTo(room));
}

} // namespace ov::widgets
