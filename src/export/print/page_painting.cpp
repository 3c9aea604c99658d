// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// What a page of a list looks like. Whatever is drawn here is measured here too.

#include "export/print/list_pages.h"
#include "support/language/text_expansion.h"

#include <QPainter>
#include <algorithm>
#include <array>

namespace ov::exporting::print {

namespace {

constexpr int mostCellLines = 3;
constexpr int mostCaptionLines = 2;
constexpr int mostTitleLines = 2;
constexpr int mostCriteriaLines = 2; // of each
constexpr std::size_t mostCriteria = 12;
constexpr double cellPadding = 1.6 * unitsPerPoint; // above and below
constexpr double sectionGap = 8 * unitsPerPoint;

QString filledIn(const std::string& pattern, int page, int pages) {
    const std::string first = std::to_string(page);
    const std::string second = std::to_string(pages);
    const std::array<std::string_view, 2> arguments = {first, second};
    TextSources sources;
    sources.arguments = arguments;
    return QString::fromStdString(expandText(pattern, sources));
}

} // namespace

std::vector<TextLine> ListPages::titleLines() const {
    return fonts_->title.broken(pageText(document_.title), content_.width(), mostTitleLines);
}

std::vector<TextLine> ListPages::smallTitleLines() const {
    return fonts_->small.broken(pageText(document_.title), content_.width(), 1);
}

std::vector<TextLine> ListPages::criteriaLines() const {
    std::vector<TextLine> lines;
    for (std::size_t i = 0; i < document_.criteria.size(); ++i) {
        const bool cut = i == mostCriteria;
        for (TextLine& line :
             fonts_->small.broken(cut ? QString(QChar(0x2026)) : pageText(document_.criteria[i]),
                                  content_.width(), mostCriteriaLines))
            lines.push_back(std::move(line));
        if (cut)
            break;
    }
    return lines;
}

double ListPages::headHeight() const {
    double height = fonts_->caption.lineHeight();
    for (std::size_t i = 0; i < captions_.size(); ++i)
        height = std::max(height, fonts_->caption.height(captions_[i], widths_[i], mostCaptionLines,
                                                         Breaks::words));
    return height + 2 * cellPadding;
}

// The first page has the large title and the criteria, the others a small one.
double ListPages::topOfRows(int page) const {
    const double top = content_.top() + headHeight() + sectionGap;
    return top + (page > 0 ? heightOf(smallTitleLines())
                           : heightOf(titleLines()) + sectionGap / 2 + heightOf(criteriaLines()));
}

double ListPages::bottomOfRows() const {
    return content_.bottom() - fonts_->small.lineHeight() - sectionGap;
}

double ListPages::rowHeight(std::int64_t row) const {
    double height = fonts_->body.lineHeight();
    for (std::size_t i = 0; i < widths_.size(); ++i)
        height =
            std::max(height, fonts_->body.height(pageText(rows_.text(document_.columns[i], row)),
                                                 widths_[i], mostCellLines));
    return height + 2 * cellPadding;
}

void ListPages::paint(QPainter& painter, int page, QSizeF target) const {
    painter.save();
    painter.scale(target.width() / page_.width(), target.height() / page_.height());
    painter.setPen(Qt::black);
    paintTop(painter, page);
    double y = topOfRows(page);
    paintCaptions(painter, y - headHeight());
    for (std::int64_t row = rowsBefore(page); row < rowsBefore(page + 1); ++row)
        y = paintRow(painter, row, y);
    paintFoot(painter, page);
    for (const PageFont* font : {&fonts_->title, &fonts_->caption, &fonts_->body, &fonts_->small})
        font->flush(painter);
    painter.restore();
}

void ListPages::paintTop(QPainter& painter, int page) const {
    QRectF place = content_;
    if (page > 0)
        return fonts_->small.draw(painter, place, smallTitleLines());
    const std::vector<TextLine> title = titleLines();
    fonts_->title.draw(painter, place, title);
    place.setTop(place.top() + heightOf(title) + sectionGap / 2);
    fonts_->small.draw(painter, place, criteriaLines());
}

void ListPages::rule(QPainter& painter, double y, double thickness, int grey) const {
    painter.fillRect(QRectF(content_.left(), y - thickness / 2, tableWidth_, thickness),
                     QColor(grey, grey, grey));
}

void ListPages::paintCaptions(QPainter& painter, double top) const {
    constexpr int shade = 236;
    const double height = headHeight();
    painter.fillRect(QRectF(content_.left(), top, tableWidth_, height),
                     QColor(shade, shade, shade));
    for (std::size_t i = 0; i < captions_.size(); ++i)
        fonts_->caption.draw(
            painter, QRectF(lefts_[i], top + cellPadding, widths_[i], height - 2 * cellPadding),
            fonts_->caption.broken(captions_[i], widths_[i], mostCaptionLines, Breaks::words));
    rule(painter, top + height, 0.8 * unitsPerPoint, 90);
}

double ListPages::paintRow(QPainter& painter, std::int64_t row, double top) const {
    double height = fonts_->body.lineHeight();
    for (std::size_t i = 0; i < widths_.size(); ++i) {
        const std::vector<TextLine> lines = fonts_->body.broken(
            pageText(rows_.text(document_.columns[i], row)), widths_[i], mostCellLines);
        const double needed = heightOf(lines);
        fonts_->body.draw(painter, QRectF(lefts_[i], top + cellPadding, widths_[i], needed), lines);
        height = std::max(height, needed);
    }
    const double bottom = top + height + 2 * cellPadding;
    rule(painter, bottom, 0.3 * unitsPerPoint, 200);
    return bottom;
}

// The page number keeps its room; date and folder share the rest.
void ListPages::paintFoot(QPainter& painter, int page) const {
    const PageFont& font = fonts_->small;
    const QString number = filledIn(document_.pageNumber, page + 1, count());
    QRectF place = content_;
    place.setTop(content_.bottom() - font.lineHeight());
    place.setLeft(content_.right() - font.width(number));
    font.draw(painter, place, font.broken(number, place.width(), 1));
    QString text = pageText(document_.madeOn);
    if (!document_.storeFolder.empty())
        text += (text.isEmpty() ? QString() : QStringLiteral("  ·  ")) +
                pageText(document_.storeFolder);
    place.setRight(place.left() - sectionGap);
    place.setLeft(content_.left());
    font.draw(painter, place, font.broken(text, place.width(), 1));
}

} // namespace ov::exporting::print
