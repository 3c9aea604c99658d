// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "export/print/shaped_text.h"

#include <QFont>
#include <QFontMetricsF>
#include <QGlyphRun>
#include <QList>
#include <QPointF>
#include <QRawFont>
#include <QRectF>
#include <QString>
#include <QStringView>
#include <cstdint>
#include <optional>
#include <vector>

class QPainter;

namespace ov::exporting::print {

// Lengths on a page, all of this folder: 1200 to the inch, the usual resolution of a printer.
constexpr double unitsPerInch = 1200;
constexpr double unitsPerPoint = unitsPerInch / 72;
constexpr double unitsPerMillimetre = unitsPerInch / 25.4;

// A font in which hundreds of thousands of short texts are measured and drawn. Latin, Greek and
// Cyrillic text, which most of it is, is put together from a table of glyphs; whatever needs
// shaping, other scripts or another font goes the long way of shaped_text.h.
class PageFont {
public:
    PageFont(const QFont& font, double points, bool bold);

    double lineHeight() const { return lineHeight_; }
    double ascent() const { return ascent_; }

    double width(QStringView text) const;
    // The widest part that is not broken when there is room for it.
    double longestWord(QStringView text) const;

    // At most `mostLines` lines no wider than `width`, broken at blanks and punctuation, within a
    // word only as `breaks` says. An empty text has no line.
    std::vector<TextLine> broken(const QString& text, double width, int mostLines,
                                 Breaks breaks = Breaks::anywhere) const;
    // The height of these lines.
    double height(const QString& text, double width, int mostLines,
                  Breaks breaks = Breaks::anywhere) const;

    // Draws the lines of a text in the cell that they were broken for, now or with the next
    // flush().
    void draw(QPainter& painter, const QRectF& cell, const std::vector<TextLine>& lines) const;
    void flush(QPainter& painter) const;

private:
    struct Glyph {
        std::uint32_t index = 0; // 0: not in the table
        float advance = 0;
    };

    // Nothing for a text that goes the long way.
    std::optional<double> simpleWidth(QStringView text) const;
    // The same for a text that must be broken: the width has to hold any letter and an ellipsis.
    bool isSimplyBroken(QStringView text, double width) const;
    float advanceOf(QChar c) const { return table_[c.unicode()].advance; }
    qsizetype fitting(QStringView text, double width) const;
    qsizetype breakBefore(QStringView text, qsizetype most, double width, Breaks breaks) const;
    // Calls visit(start, length, isCut) for each line of a simple text.
    template <typename Visit>
    void forEachLine(QStringView text, double width, int mostLines, Breaks breaks,
                     Visit visit) const;
    void gather(QPointF place, const QString& text) const;
    void fillTable();

    QFont font_;
    QFontMetricsF metrics_;
    QRawFont raw_;
    std::vector<Glyph> table_; // of the first code points
    double lineHeight_ = 0;
    double ascent_ = 0;
    double ellipsisWidth_ = 0;
    mutable QList<quint32> glyphs_; // gathered since the last flush
    mutable QList<QPointF> places_;
};

} // namespace ov::exporting::print
