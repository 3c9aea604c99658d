// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "export/document.h"
#include "export/print/page_columns.h"
#include "export/print/page_font.h"
#include "export/rows.h"

#include <QPageLayout>
#include <QPageSize>
#include <QRectF>
#include <cstdint>
#include <memory>
#include <vector>

class QPainter;

namespace ov::exporting::print {

// A list on pages: the title, on the first page the criteria in words, the captions of the columns
// above the rows of each page, the date, the store folder and "page n of m" at its foot. Paper, PDF
// and preview all show what paint() draws.
//
// Kept for each page is where it begins, so that any page can be drawn at any time and a long list
// takes no more memory than a short one.
class ListPages {
public:
    // Both are borrowed. The paper turns as the style of the document says.
    ListPages(const Document& document, const RowSource& rows, const QPageSize& paper);

    // Finds the pages, before anything else. False when `goOn` stopped it.
    bool layOut(const GoOn& goOn);

    int count() const { return static_cast<int>(firstRows_.size()); }
    // The rows that stand on the pages before this one, which is counted from 0.
    std::int64_t rowsBefore(int page) const;

    const QPageSize& paper() const { return paper_; }
    QPageLayout::Orientation orientation() const { return orientation_; }
    QSizeF pageSize() const { return page_.size(); } // units

    // Draws that page onto a device on which the whole page has the size `target`, with its corner
    // at the origin.
    void paint(QPainter& painter, int page, QSizeF target) const;

private:
    struct Fonts {
        PageFont body;
        PageFont caption;
        PageFont title;
        PageFont small;
    };

    void chooseLayout();
    bool tryFont(double points, QPageLayout::Orientation orientation);
    void makeFonts(double points);
    void placeColumns(const std::vector<ColumnNeed>& needs);
    QString captionOf(std::size_t column) const;

    double columnGap() const;
    double rowHeight(std::int64_t row) const;
    double headHeight() const;
    double topOfRows(int page) const;
    double bottomOfRows() const;
    std::vector<TextLine> criteriaLines() const;
    std::vector<TextLine> titleLines() const;
    std::vector<TextLine> smallTitleLines() const; // of further pages

    void paintTop(QPainter& painter, int page) const;
    void paintCaptions(QPainter& painter, double top) const;
    double paintRow(QPainter& painter, std::int64_t row, double top) const;
    void paintFoot(QPainter& painter, int page) const;
    void rule(QPainter& painter, double y, double thickness, int grey) const;

    const Document& document_;
    const RowSource& rows_;
    QPageSize paper_;
    QPageLayout::Orientation orientation_ = QPageLayout::Portrait;
    QRectF page_;    // the paper
    QRectF content_; // within its margins
    std::unique_ptr<Fonts> fonts_;
    std::vector<double> widths_; // of the columns
    std::vector<double> lefts_;
    std::vector<QString> captions_;
    double tableWidth_ = 0;
    std::vector<std::int64_t> firstRows_; // of each page
};

} // namespace ov::exporting::print
