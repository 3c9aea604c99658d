// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "export/print/shaped_text.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QTextLayout>
#include <algorithm>
#include <numeric>

namespace ov::exporting::print {

namespace {

constexpr double rounding = 1; // of Qt's fixed point numbers

QTextOption optionOf(bool rightToLeft, QTextOption::WrapMode wrap) {
    QTextOption option;
    option.setTextDirection(rightToLeft ? Qt::RightToLeft : Qt::LeftToRight);
    option.setAlignment(rightToLeft ? Qt::AlignRight : Qt::AlignLeft);
    option.setWrapMode(wrap);
    return option;
}

QString withoutBlanksBehind(QString text) {
    while (text.endsWith(QLatin1Char(' ')))
        text.chop(1);
    return text;
}

} // namespace

double heightOf(const std::vector<TextLine>& lines) {
    return std::accumulate(lines.begin(), lines.end(), 0.0,
                           [](double sum, const TextLine& line) { return sum + line.height; });
}

std::vector<TextLine> shapedLines(const QString& text, const QFont& font, double width,
                                  int mostLines, Breaks breaks, double leastHeight) {
    const bool rightToLeft = text.isRightToLeft();
    QTextLayout layout(text, font);
    layout.setTextOption(optionOf(rightToLeft, breaks == Breaks::words
                                                   ? QTextOption::WordWrap
                                                   : QTextOption::WrapAtWordBoundaryOrAnywhere));
    std::vector<TextLine> lines;
    layout.beginLayout();
    for (bool isCut = false; !isCut && static_cast<int>(lines.size()) < mostLines;) {
        QTextLine line = layout.createLine();
        if (!line.isValid())
            break;
        line.setLineWidth(width);
        const bool isLast = static_cast<int>(lines.size()) + 1 == mostLines;
        isCut = line.naturalTextWidth() > width + rounding ||
                (isLast && line.textStart() + line.textLength() < text.size());
        lines.push_back({isCut ? QFontMetricsF(font).elidedText(text.mid(line.textStart()),
                                                                Qt::ElideRight, width)
                               : withoutBlanksBehind(text.mid(line.textStart(), line.textLength())),
                         std::max(line.height(), leastHeight), rightToLeft});
    }
    layout.endLayout();
    return lines;
}

void drawShaped(QPainter& painter, const QFont& font, const std::vector<TextLine>& lines,
                const QRectF& cell) {
    painter.save();
    painter.setClipRect(cell, Qt::IntersectClip);
    double y = cell.top();
    for (const TextLine& line : lines) {
        QTextLayout layout(line.text, font);
        layout.setTextOption(optionOf(line.rightToLeft, QTextOption::NoWrap));
        layout.beginLayout();
        QTextLine only = layout.createLine();
        only.setLineWidth(cell.width());
        layout.endLayout();
        layout.draw(&painter, {cell.left(), y + (line.height - only.height()) / 2});
        y += line.height;
    }
    painter.restore();
}

} // namespace ov::exporting::print
