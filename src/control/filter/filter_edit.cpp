// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "control/filter/filter_edit.h"

#include "support/language/text_ids.h"
#include "widgets/captions.h"
#include "widgets/text.h"

#include <QKeyEvent>

namespace ov {

FilterEdit::FilterEdit(QWidget* parent) : QLineEdit(parent) {
    setObjectName(QStringLiteral("txtResultFilter"));
    setClearButtonEnabled(true);
    constexpr int widest = 320;
    setMaximumWidth(widest);
    widgets::setSpokenName(*this, text_id::filterName);
    widgets::setTip(*this, text_id::filterTip);
}

void FilterEdit::retranslate() {
    setPlaceholderText(widgets::text(text_id::filterPlaceholder));
}

void FilterEdit::focusInEvent(QFocusEvent* event) {
    QLineEdit::focusInEvent(event);
    Q_EMIT entered();
}

void FilterEdit::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Down:
    case Qt::Key_PageDown:
        Q_EMIT left();
        break;
    default:
        QLineEdit::keyPressEvent(event);
    }
}

} // namespace ov
