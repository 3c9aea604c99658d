// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "control/pedal/key_catcher.h"

#include <QApplication>
#include <QKeyEvent>

namespace ov {

void KeyCatcher::start() {
    qApp->installEventFilter(this);
}

void KeyCatcher::stop() {
    qApp->removeEventFilter(this);
}

bool KeyCatcher::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::KeyPress:
        if (watched->isWidgetType() && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape)
            Q_EMIT escaped();
        return watched->isWidgetType();
    case QEvent::KeyRelease:
    case QEvent::Shortcut:
        return watched->isWidgetType();
    case QEvent::ShortcutOverride: // taken, so that no shortcut comes of it
        event->accept();
        return watched->isWidgetType();
    default:
        return QObject::eventFilter(watched, event);
    }
}

} // namespace ov
