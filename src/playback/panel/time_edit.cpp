// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "playback/panel/time_edit.h"

#include "playback/panel/player_texts.h"
#include "support/language/text_ids.h"
#include "widgets/captions.h"
#include "widgets/spoken.h"
#include "widgets/text.h"

#include <QKeyEvent>
#include <QToolTip>

namespace ov {

namespace {

bool isOurs(int key) {
    return key == Qt::Key_Escape || key == Qt::Key_Return || key == Qt::Key_Enter;
}

} // namespace

TimeEdit::TimeEdit(QWidget* parent) : QLineEdit(parent) {
    setObjectName(QStringLiteral("txtGoToTime"));
    setFixedWidth(fontMetrics().horizontalAdvance(QStringLiteral("+00:00:00 m")));
    widgets::setTip(*this, text_id::goToTimeTip);
    widgets::setSpokenName(*this, text_id::goToTimeTip);
    hide();
}

void TimeEdit::open(std::int32_t longest) {
    longest_ = longest;
    if (hasFocus()) {
        selectAll();
        return;
    }
    before_ = window()->focusWidget();
    clear();
    show();
    setFocus(Qt::ShortcutFocusReason);
}

bool TimeEdit::event(QEvent* event) {
    if (event->type() == QEvent::ShortcutOverride &&
        isOurs(static_cast<QKeyEvent*>(event)->key())) {
        event->accept();
        return true;
    }
    return QLineEdit::event(event);
}

void TimeEdit::keyPressEvent(QKeyEvent* event) {
    if (!isOurs(event->key()))
        QLineEdit::keyPressEvent(event);
    else if (event->key() == Qt::Key_Escape)
        leave();
    else
        accept();
}

void TimeEdit::accept() {
    const auto time = readTypedTime(widgets::toUtf8(text()));
    if (!time || (!time->isRelative && time->seconds > longest_)) {
        const QString reason = time ? widgets::text(text_id::placeBeyondEnd,
                                                    {widgets::toUtf8(FormatPlayTime(longest_, 1))})
                                    : widgets::text(text_id::goToTimeTip);
        QToolTip::showText(mapToGlobal(rect().bottomLeft()), reason, this);
        widgets::announce(*this, reason);
        selectAll();
        return;
    }
    leave();
    Q_EMIT typed(*time);
}

void TimeEdit::focusOutEvent(QFocusEvent* event) {
    QLineEdit::focusOutEvent(event);
    if (event->reason() != Qt::PopupFocusReason && event->reason() != Qt::ActiveWindowFocusReason)
        hide();
}

void TimeEdit::leave() {
    if (hasFocus() && before_)
        before_->setFocus(Qt::OtherFocusReason);
    hide();
}

} // namespace ov
