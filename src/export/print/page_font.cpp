// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "export/print/page_font.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

namespace ov::exporting::print {

namespace {

constexpr std::size_t tableSize = 0x2100;
constexpr QChar ellipsis(0x2026);
constexpr double rounding = 0.5; // units

// Letters, digits and punctuation that stand side by side without touching their neighbours.
bool isSimple(char16_t c) {
    const bool latin = (c >= u' ' && c < 0x7F) || (c >= 0xA0 && c < 0x250 && c != 0xAD) ||
                       (c >= 0x1E00 && c < 0x1F00);
    const bool greekOrCyrillic = c >= 0x386 && c < 0x483;
    const bool punctuation = (c >= 0x2010 && c <= 0x2027) || (c >= 0x2030 && c <= 0x205E);
    return latin || greekOrCyrillic || punctuation || c == 0x20AC;
}

// Not within a date or a number.
bool mayBreakAfter(QStringView text, qsizetype i) {
    constexpr QStringView always = u" \\;@";
    constexpr QStringView betweenWords = u"-/,";
    return always.contains(text[i]) ||
           (betweenWords.contains(text[i]) && i + 1 < text.size() && !text[i + 1].isDigit());
}

QFont pageFont(QFont font, double points, bool bold) {
    font.setPixelSize(static_cast<int>(std::lround(points * unitsPerPoint)));
    font.setBold(bold);
    font.setHintingPreference(QFont::PreferNoHinting);
    font.setKerning(false); // so that both ways look the same
    return font;
}

} // namespace

PageFont::PageFont(const QFont& font, double points, bool bold)
    : font_(pageFont(font, points, bold)),
      metrics_(font_),
      raw_(QRawFont::fromFont(font_)),
      table_(tableSize) {
    fillTable();
    lineHeight_ = metrics_.ascent() + metrics_.descent();
    ascent_ = metrics_.ascent();
    ellipsisWidth_ = width(QStringView(&ellipsis, 1));
}

void PageFont::fillTable() {
    QString characters;
    for (char16_t c = u' '; c < tableSize; ++c)
        if (isSimple(c))
            characters += QChar(c);
    const QList<quint32> indexes = raw_.glyphIndexesForString(characters);
    const QList<QPointF> advances = raw_.advancesForGlyphIndexes(indexes);
    for (qsizetype i = 0; i < std::min(advances.size(), characters.size()); ++i)
        table_[characters[i].unicode()] = {indexes[i], static_cast<float>(advances[i].x())};
}

std::optional<double> PageFont::simpleWidth(QStringView text) const {
    double sum = 0;
    for (const QChar c : text) {
        if (c.unicode() >= tableSize || table_[c.unicode()].index == 0)
            return std::nullopt;
        sum += static_cast<double>(advanceOf(c));
    }
    return sum;
}

double PageFont::width(QStringView text) const {
    const auto simple = simpleWidth(text);
    return simple ? *simple : metrics_.horizontalAdvance(text.toString());
}

double PageFont::longestWord(QStringView text) const {
    double longest = 0;
    qsizetype start = 0;
    for (qsizetype i = 0; i <= text.size(); ++i) {
        if (i < text.size() && !mayBreakAfter(text, i))
            continue;
        longest = std::max(longest, width(text.sliced(start, i - start)));
        start = i;
    }
    return longest;
}

bool PageFont::isSimplyBroken(QStringView text, double width) const {
    return std::ranges::all_of(
        text, [&](QChar c) { return static_cast<double>(advanceOf(c)) + ellipsisWidth_ <= width; });
}

// How many characters of a simple text the width holds.
qsizetype PageFont::fitting(QStringView text, double width) const {
    double sum = 0;
    qsizetype count = 0;
    while (count < text.size() && (sum += static_cast<double>(advanceOf(text[count]))) <= width)
        ++count;
    return count;
}

// Where to break a text of which `most` characters fit; blanks may hang over. A word is broken only
// when it has no room on a line of its own; 0 where that must not be.
qsizetype PageFont::breakBefore(QStringView text, qsizetype most, double width,
                                Breaks breaks) const {
    if (text[most] == QLatin1Char(' '))
        return most;
    qsizetype start = most;
    while (start > 0 && !mayBreakAfter(text, start - 1))
        --start;
    if (breaks == Breaks::words)
        return start;
    qsizetype end = most;
    while (end < text.size() && text[end] != QLatin1Char(' ') && !mayBreakAfter(text, end))
        ++end;
    const bool hasRoom = simpleWidth(text.sliced(start, end - start)).value_or(width) <= width;
    return start > 0 && (hasRoom || start > most / 2) ? start : most;
}

template <typename Visit>
void PageFont::forEachLine(QStringView text, double width, int mostLines, Breaks breaks,
                           Visit visit) const {
    qsizetype start = 0;
    for (int line = 1; start < text.size(); ++line) {
        const QStringView rest = text.sliced(start);
        const qsizetype most = fitting(rest, width);
        if (most == rest.size()) {
            visit(rest, false);
            return;
        }
        const qsizetype place = line == mostLines ? 0 : breakBefore(rest, most, width, breaks);
        if (place == 0) {
            visit(rest.first(fitting(rest, width - ellipsisWidth_)), true);
            return;
        }
        visit(rest.first(place), false);
        start += place;
        while (start < text.size() && text[start] == QLatin1Char(' '))
            ++start;
    }
}

std::vector<TextLine> PageFont::broken(const QString& text, double width, int mostLines,
                                       Breaks breaks) const {
    std::vector<TextLine> lines;
    if (text.isEmpty())
        return lines;
    const auto whole = simpleWidth(text);
    if (whole && *whole <= width) {
        lines.push_back({text, lineHeight_, false});
    } else if (!whole || !isSimplyBroken(text, width)) {
        lines = shapedLines(text, font_, width, mostLines, breaks, lineHeight_);
    } else {
        forEachLine(text, width, mostLines, breaks, [&](QStringView line, bool isCut) {
            lines.push_back(
                {isCut ? line.toString() + ellipsis : line.toString(), lineHeight_, false});
        });
    }
    return lines;
}

double PageFont::height(const QString& text, double width, int mostLines, Breaks breaks) const {
    if (text.isEmpty())
        return 0;
    const auto whole = simpleWidth(text);
    if (whole && *whole <= width)
        return lineHeight_;
    if (!whole || !isSimplyBroken(text, width))
        return heightOf(shapedLines(text, font_, width, mostLines, breaks, lineHeight_));
    int count = 0;
    forEachLine(text, width, mostLines, breaks, [&count](QStringView, bool) { ++count; });
    return count * lineHeight_;
}

void PageFont::draw(QPainter& painter, const QRectF& cell,
                    const std::vector<TextLine>& lines) const {
    const bool simple = std::ranges::all_of(lines, [&](const TextLine& line) {
        const auto width = simpleWidth(line.text);
        return width && *width <= cell.width() + rounding;
    });
    if (!simple)
        return drawShaped(painter, font_, lines, cell);
    QPointF place(cell.left(), cell.top() + ascent_);
    for (const TextLine& line : lines) {
        gather(place, line.text);
        place.ry() += line.height;
    }
}

void PageFont::gather(QPointF place, const QString& text) const {
    for (const QChar c : text) {
        const Glyph& glyph = table_[c.unicode()];
        glyphs_.append(glyph.index);
        places_.append(place);
        place.rx() += static_cast<double>(glyph.advance);
    }
}

void PageFont::flush(QPainter& painter) const {
    if (glyphs_.isEmpty())
        return;
    QGlyphRun run;
    run.setRawFont(raw_);
    run.setGlyphIndexes(glyphs_);
    run.setPositions(places_);
    painter.drawGlyphRun({0, 0}, run);
    glyphs_.clear();
    places_.clear();
}

} // namespace ov::exporting::print
