// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QRectF>
#include <QString>
#include <vector>

class QFont;
class QPainter;

namespace ov::exporting::print {

// Where a text may be broken to fit a width.
enum class Breaks {
    anywhere, // between words, else within one that has no line for itself
    words,    // a word that is too long is cut
};

// A line of a text that was broken to fit a width.
struct TextLine {
    QString text; // an ellipsis stands for what is missing
    double height = 0;
    bool rightToLeft = false; // as the whole text, whatever this line begins with
};
double heightOf(const std::vector<TextLine>& lines);

// Any script, with marks, right to left, from whatever font has its letters: at most `mostLines`
// lines, each as high as its letters, `leastHeight` at least.
std::vector<TextLine> shapedLines(const QString& text, const QFont& font, double width,
                                  int mostLines, Breaks breaks, double leastHeight);

// Draws such lines below each other; nothing outside of `cell` is touched.
void drawShaped(QPainter& painter, const QFont& font, const std::vector<TextLine>& lines,
                const QRectF& cell);

} // namespace ov::exporting::print
