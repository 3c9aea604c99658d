// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "export/print/page_columns.h"

#include "dictation/field_table.h"

#include <algorithm>
#include <numeric>

namespace ov::exporting::print {

namespace {

double sumOf(const std::vector<double>& widths) {
    return std::accumulate(widths.begin(), widths.end(), 0.0);
}

double gapsOf(std::size_t columns, double gap) {
    return columns == 0 ? 0 : static_cast<double>(columns - 1) * gap;
}

std::vector<double> cappedAt(double cap, const std::vector<ColumnNeed>& needs) {
    std::vector<double> widths;
    widths.reserve(needs.size());
    for (const ColumnNeed& need : needs)
        widths.push_back(std::clamp(cap, need.least, need.natural));
    return widths;
}

// The highest cap on the widths with which they fit; they do with none.
std::vector<double> sharedOut(const std::vector<ColumnNeed>& needs, double room) {
    double low = 0;
    double high = room;
    constexpr int halvings = 30; // of a metre down to less than a unit
    for (int i = 0; i < halvings; ++i) {
        const double cap = (low + high) / 2;
        (sumOf(cappedAt(cap, needs)) <= room ? low : high) = cap;
    }
    return cappedAt(low, needs);
}

// Captions are broken between words only.
void addCaption(const Column& column, const PageFont& font, double widestWord, ColumnNeed& need) {
    const QString caption = pageText(column.shortCaption);
    need.word = std::min(font.longestWord(caption), 1.5 * widestWord);
    need.least = std::max(
        {need.least, need.word, need.natural > 0 ? std::min(font.width(caption), widestWord) : 0});
    need.natural = std::max({need.natural, need.least, font.width(pageText(column.caption))});
    need.whole = std::max(need.whole, need.natural);
    const auto type = modDictation::fieldDefinition(column.field).valueType;
    need.isRigid = type == modDictation::ValueType::date || type == modDictation::ValueType::time;
}

} // namespace

QString pageText(const std::string& utf8) {
    constexpr char16_t firstMark = 0x300; // nothing below it is ever put together
    QString text = QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
    bool mayCompose = false;
    for (QChar& c : text) {
        if (c.category() == QChar::Other_Control || c.unicode() == 0x2028 || c.unicode() == 0x2029)
            c = QLatin1Char(' ');
        mayCompose = mayCompose || c.unicode() >= firstMark;
    }
    return mayCompose ? text.normalized(QString::NormalizationForm_C) : text;
}

std::vector<ColumnNeed> columnNeeds(const std::vector<Column>& columns, const RowSource& rows,
                                    const PageFont& font, const PageFont& captionFont) {
    constexpr double widest = 70 * unitsPerMillimetre; // what is longer is broken
    constexpr double charactersOfWord = 11;
    const double widestWord = charactersOfWord * font.width(u"0");
    constexpr std::int64_t sampleSize = 400;
    std::vector<ColumnNeed> needs(columns.size());
    const std::int64_t step = std::max<std::int64_t>(rows.count() / sampleSize, 1);
    for (std::int64_t row = 0; row < rows.count(); row += step)
        for (std::size_t i = 0; i < columns.size(); ++i) {
            const QString text = pageText(rows.text(columns[i], row));
            needs[i].whole = std::max(needs[i].whole, font.width(text));
            needs[i].natural = std::max(needs[i].natural, std::min(font.width(text), widest));
            needs[i].least = std::max(needs[i].least, std::min(font.longestWord(text), widestWord));
        }
    for (std::size_t i = 0; i < columns.size(); ++i)
        addCaption(columns[i], captionFont, widestWord, needs[i]);
    return needs;
}

bool fits(const std::vector<ColumnNeed>& needs, double width, double gap) {
    return sumOf(cappedAt(0, needs)) + gapsOf(needs.size(), gap) <= width;
}

std::vector<double> columnWidths(const std::vector<ColumnNeed>& needs, double width, double gap) {
    const double room = width - gapsOf(needs.size(), gap);
    const double natural = sumOf(cappedAt(width, needs));
    if (natural <= room) { // what is left goes to those that break their texts
        std::vector<ColumnNeed> whole = needs;
        for (ColumnNeed& need : whole)
            need = {need.whole, need.whole, std::min(need.natural, room), 0, false};
        return sharedOut(whole, room);
    }
    if (fits(needs, width, gap))
        return sharedOut(needs, room);
    // Dates and numbers are short; they stay whole for longest, then the words of captions.
    std::vector<ColumnNeed> given = needs;
    for (ColumnNeed& need : given)
        need = {need.least, need.whole, need.isRigid ? need.least : need.word, 0, need.isRigid};
    if (!fits(given, width, gap))
        for (ColumnNeed& need : given)
            need.least = need.isRigid ? need.least : 0;
    return sharedOut(given, room);
}

} // namespace ov::exporting::print
