// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QList>
#include <QObject>
#include <QString>
#include <cstdint>
#include <functional>

class QWidget;

// Texts of windows, by their number in the language file. A widget remembers the numbers it was
// given, so that a change of language needs no more than translate().

namespace ov::widgets {

// The text of a label, button, menu item or group, or the title of a window.
void setCaption(QObject& object, std::int32_t textId);
void setTip(QObject& object, std::int32_t textId);
// What a screen reader says, for widgets that show no text of their own.
void setSpokenName(QWidget& widget, std::int32_t textId);

// Gives `root` and all below it their texts in the current language, and the names of days and
// months to what shows dates.
void translate(QWidget& root);

// Calls `retranslate` at each change of language that `widget` hears of, after what Qt does of
// itself, which would put its own words back. For as long as `widget` lives.
void followLanguage(QWidget& widget, std::function<void()> retranslate);

// The name of an element of a control array: "cmdOK(1)".
QString indexedName(const char* name, int index);

} // namespace ov::widgets
