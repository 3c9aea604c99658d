// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// How a list is divided into pages; what they look like is in page_painting.cpp.

#include "export/print/list_pages.h"

#include <algorithm>
#include <array>

namespace ov::exporting::print {

namespace {

constexpr double margin = 10 * unitsPerMillimetre; // more than any printer keeps free
constexpr double usualPoints = 9;
constexpr std::array<double, 6> smallerPoints = {8.5, 8, 7.5, 7, 6.5, 6};

QFont fontOf(const PageStyle& style) {
    QFont font;
    if (!style.fontName.empty())
        font.setFamily(QString::fromStdString(style.fontName));
    return font;
}

} // namespace

ListPages::ListPages(const Document& document, const RowSource& rows, const QPageSize& paper)
    : document_(document), rows_(rows), paper_(paper) {
    chooseLayout();
}

// The first of these in which every column can be read: upright, across, across and smaller.
// What the user has set is left as it is.
void ListPages::chooseLayout() {
    const PageStyle& style = document_.style;
    std::vector<QPageLayout::Orientation> orientations;
    if (style.orientation != Orientation::landscape)
        orientations.push_back(QPageLayout::Portrait);
    if (style.orientation != Orientation::portrait)
        orientations.push_back(QPageLayout::Landscape);
    const double points = style.fontSize > 0 ? style.fontSize : usualPoints;
    for (const QPageLayout::Orientation orientation : orientations)
        if (tryFont(points, orientation))
            return;
    if (style.fontSize > 0)
        return;
    for (const double smaller : smallerPoints)
        if (tryFont(smaller, orientations.back()))
            return;
}

// True when the columns fit; upright, without a text being broken.
bool ListPages::tryFont(double points, QPageLayout::Orientation orientation) {
    orientation_ = orientation;
    QSizeF size = paper_.size(QPageSize::Point) * unitsPerPoint;
    if (orientation == QPageLayout::Landscape)
        size.transpose();
    page_ = QRectF({0, 0}, size);
    content_ = page_.adjusted(margin, margin, -margin, -margin);
    makeFonts(points);
    std::vector<ColumnNeed> needs =
        columnNeeds(document_.columns, rows_, fonts_->body, fonts_->caption);
    placeColumns(needs);
    const bool mayTurn = orientation == QPageLayout::Portrait &&
                         document_.style.orientation == Orientation::automatic;
    if (mayTurn)
        for (ColumnNeed& need : needs)
            need.least = need.natural;
    return fits(needs, content_.width(), columnGap());
}

void ListPages::makeFonts(double points) {
    const QFont font = fontOf(document_.style);
    constexpr double titlePoints = 14;
    constexpr double smallPoints = 8;
    fonts_ = std::make_unique<Fonts>(
        Fonts{PageFont(font, points, false), PageFont(font, points, true),
              PageFont(font, titlePoints, true), PageFont(font, smallPoints, false)});
}

double ListPages::columnGap() const {
    constexpr double share = 0.55; // of the height of a line
    return fonts_->body.lineHeight() * share;
}

void ListPages::placeColumns(const std::vector<ColumnNeed>& needs) {
    widths_ = columnWidths(needs, content_.width(), columnGap());
    lefts_.clear();
    captions_.clear();
    double left = content_.left();
    for (std::size_t i = 0; i < widths_.size(); ++i) {
        lefts_.push_back(left);
        captions_.push_back(captionOf(i));
        left += widths_[i] + columnGap();
    }
    tableWidth_ = widths_.empty() ? 0 : left - columnGap() - content_.left();
}

QString ListPages::captionOf(std::size_t column) const {
    const Column& wanted = document_.columns[column];
    QString caption = pageText(wanted.caption);
    return fonts_->caption.width(caption) <= widths_[column] ? caption
                                                             : pageText(wanted.shortCaption);
}

std::int64_t ListPages::rowsBefore(int page) const {
    return page < count() ? firstRows_[static_cast<std::size_t>(page)] : rows_.count();
}

bool ListPages::layOut(const GoOn& goOn) {
    firstRows_.assign(1, 0);
    double y = topOfRows(0);
    const double bottom = bottomOfRows();
    for (std::int64_t row = 0; row < rows_.count(); ++row) {
        const double height = rowHeight(row);
        // A page takes one row at least, however little room there is.
        if (y + height > bottom && row > firstRows_.back()) {
            firstRows_.push_back(row);
            y = topOfRows(count() - 1);
        }
        y += height;
        if (!goOn(row + 1))
            return false;
    }
    return true;
}

} // namespace ov::exporting::print
