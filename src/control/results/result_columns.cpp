// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "control/results/result_columns.h"

#include "control/results/result_model.h"

#include <QScopedValueRollback>
#include <QTableView>
#include <algorithm>
#include <cmath>

namespace ov {

namespace {

constexpr int twipsPerInch = 1440;

} // namespace

ResultColumns::ResultColumns(QTableView& view, ResultModel& model)
    : QObject(&view), view_(view), header_(*view.horizontalHeader()), model_(model) {
    setUpHeader();
    constexpr int whenDraggingRests = 500;
    save_.setSingleShot(true);
    save_.setInterval(whenDraggingRests);
    connect(&save_, &QTimer::timeout, this, [this] { settings_.setColumnLayout(layout_); });
}

void ResultColumns::setUpHeader() {
    header_.setSectionsMovable(true);
    header_.setHighlightSections(false);
    header_.setSortIndicatorShown(true);
    constexpr int narrowest = 18;
    header_.setMinimumSectionSize(narrowest);
    connect(&header_, &QHeaderView::sectionClicked, this, &ResultColumns::clicked);
    connect(&header_, &QHeaderView::sectionResized, this, &ResultColumns::resized);
    connect(&header_, &QHeaderView::sectionMoved, this, &ResultColumns::changedByUser);
    header_.setContextMenuPolicy(Qt::CustomContextMenu);
    connect(&header_, &QWidget::customContextMenuRequested, this, [this](const QPoint& place) {
        Q_EMIT menuRequested(header_.logicalIndexAt(place), header_.mapToGlobal(place));
    });
}

void ResultColumns::setSettings(const ControlSettings& settings) {
    settings_ = settings;
    layout_ = settings.columnLayout();
}

void ResultColumns::saveSettings() {
    if (!save_.isActive())
        return;
    save_.stop();
    settings_.setColumnLayout(layout_);
}

void ResultColumns::apply() {
    const QScopedValueRollback applying(applying_, true);
    model_.setColumns();
    applyWidths();
    place();
}

void ResultColumns::applyWidths() {
    for (int i = 0; i < model_.columnCount(); ++i) {
        const ResultModel::Column& column = model_.columns()[static_cast<std::size_t>(i)];
        view_.setColumnHidden(i, column.width == 0);
        if (column.width > 0)
            view_.setColumnWidth(i, pixelsOf(layout_.width(column.field).value_or(column.width)));
    }
}

void ResultColumns::place() {
    std::vector<std::int32_t> fields;
    for (const ResultModel::Column& column : model_.columns())
        fields.push_back(column.field);
    int place = 0;
    for (const std::int32_t field : layout_.arranged(fields))
        header_.moveSection(header_.visualIndex(model_.columnOf(field)), place++);
}

void ResultColumns::resized(int column, int /*oldSize*/, int newSize) {
    if (applying_ || newSize == 0)
        return;
    layout_.setWidth(fieldOf(column), twipsOf(newSize));
    changedByUser();
}

void ResultColumns::fitWidth(int column) {
    const int widest = std::max(view_.viewport()->width(), header_.minimumSectionSize());
    view_.resizeColumnToContents(column);
    view_.setColumnWidth(column, std::min(view_.columnWidth(column), widest));
}

void ResultColumns::moveBy(int column, int places) {
    const std::vector<int> columns = shown();
    const auto at = std::find(columns.begin(), columns.end(), column) - columns.begin();
    const auto to = at + places;
    if (to >= 0 && to < static_cast<std::ptrdiff_t>(columns.size()))
        header_.moveSection(header_.visualIndex(column),
                            header_.visualIndex(columns[static_cast<std::size_t>(to)]));
}

void ResultColumns::reset() {
    layout_ = {};
    save_.start();
}

void ResultColumns::changedByUser() {
    if (applying_)
        return;
    std::vector<std::int32_t> fields;
    for (int place = 0; place < header_.count(); ++place)
        fields.push_back(fieldOf(header_.logicalIndex(place)));
    layout_.arrange(std::move(fields));
    save_.start();
}

std::int32_t ResultColumns::fieldOf(int column) const {
    return model_.columns().at(static_cast<std::size_t>(column)).field;
}

// The widths were chosen for lists whose digits are a sixteenth of an inch wide. Where those of the
// desktop's font are wider, so are the columns, or no date would fit.
double ResultColumns::pixelsPerTwip() const {
    constexpr double twipsPerDigit = twipsPerInch / 16.0;
    const double perInch = static_cast<double>(view_.logicalDpiX()) / twipsPerInch;
    const int digit = view_.fontMetrics().horizontalAdvance(QLatin1Char('0'));
    return std::max(perInch, digit / twipsPerDigit);
}

int ResultColumns::pixelsOf(std::int32_t twips) const {
    constexpr std::int32_t widest = 100000;
    return static_cast<int>(std::lround(std::min(twips, widest) * pixelsPerTwip()));
}

std::int32_t ResultColumns::twipsOf(int pixels) const {
    return static_cast<std::int32_t>(std::lround(pixels / pixelsPerTwip()));
}

std::vector<int> ResultColumns::shown() const {
    std::vector<int> columns;
    for (int place = 0; place < header_.count(); ++place)
        if (const int column = header_.logicalIndex(place); !view_.isColumnHidden(column))
            columns.push_back(column);
    return columns;
}

std::vector<std::int32_t> ResultColumns::shownFields() const {
    std::vector<std::int32_t> fields;
    for (const int column : shown())
        fields.push_back(fieldOf(column));
    return fields;
}

} // namespace ov
