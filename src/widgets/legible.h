// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QColor>
#include <QPalette>

class QAbstractButton;
class QWidget;

// What keeps windows legible whatever colours and letters the desktop is set to.

namespace ov::widgets {

// How well one colour is read on another, from 1 (the same) to 21 (black on white): the ratio of
// their luminances, as the guidelines for accessible content count it.
double contrast(const QColor& one, const QColor& other);

// Less contrast than this is hard to read.
constexpr double legibleContrast = 4.5;

// For words that stand back behind others: between the colours of text and background, as near to
// the background as is still legible. The text's own where that is not either.
QColor hintColour(const QColor& text, const QColor& background);

// The words of a label stand back, also after a change of the desktop's colours.
void setHint(QWidget& label);

// The icon is as high as the letters beside it, also after a change of the font.
void fitIcon(QAbstractButton& button);

} // namespace ov::widgets
