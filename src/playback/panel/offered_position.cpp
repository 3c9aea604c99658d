// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "playback/panel/offered_position.h"

#include "playback/milliseconds.h"
#include "playback/panel/player_texts.h"
#include "support/language/text_ids.h"
#include "widgets/captions.h"
#include "widgets/spoken.h"
#include "widgets/text.h"

namespace ov {

OfferedPosition::OfferedPosition(QWidget* parent) : QToolButton(parent) {
    setObjectName(QStringLiteral("cmdOfferedPosition"));
    setFocusPolicy(Qt::TabFocus);
    widgets::setTip(*this, text_id::offeredPositionTip);
    hide();
}

void OfferedPosition::offer(std::int32_t milliseconds) {
    milliseconds_ = milliseconds;
    retranslate();
    show();
    widgets::announce(*this, text());
}

// The keyboard goes on to where it was useful before.
void OfferedPosition::withdraw() {
    const bool hadFocus = hasFocus();
    hide();
    if (hadFocus && parentWidget() != nullptr)
        parentWidget()->setFocus();
}

void OfferedPosition::retranslate() {
    const QString time = FormatPlayTime(milliseconds_, msOfSecond);
    setText(widgets::text(text_id::goOnAt, {widgets::toUtf8(time)}));
}

} // namespace ov
