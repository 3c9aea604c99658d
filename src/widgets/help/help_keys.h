// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

class QWidget;

namespace ov::widgets {

// In `root` and all below it F1 shows the guide, Shift+F1 explains what has the keyboard, and
// Ctrl+/ lists the keys.
void addHelpKeys(QWidget& root);

// F1 on that widget, or on one in it that has no chapter of its own, leads there
// (widgets/help/guide_window.h). Without any it is the chapter about the window.
void setChapter(QWidget& widget, const char* chapter);

// Gives all that can be used in `root` its explanation in the current language, for Shift+F1 and
// "What's this": the one table of them.
void explain(QWidget& root);

} // namespace ov::widgets
