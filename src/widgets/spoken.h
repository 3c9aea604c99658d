// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QAccessible>
#include <QString>

class QLabel;
class QWidget;

// What screen readers hear of widgets that Qt would not tell them enough about.

namespace ov::widgets {

// The widget is one of that kind to a screen reader: a label that is a notification is read out
// when it changes, a plain widget may be the group of what stands in it, a progress bar a text that
// says what stands in it. Before anything else is said of the widget.
void setSpokenRole(QWidget& widget, QAccessible::Role role);

// Has the text of the label read out now, whatever has the keyboard.
void announce(QLabel& label);

// Has a text read out that stands nowhere, about that widget, which stands in another one.
void announce(const QWidget& about, const QString& text);

// What an empty list says in words drawn into it; empty when it holds something.
void setSpokenHint(QWidget& list, const QString& hint);

} // namespace ov::widgets
