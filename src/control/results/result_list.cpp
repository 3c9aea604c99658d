// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "control/results/result_list.h"

#include "control/list_hint.h"
#include "control/results/result_delegate.h"
#include "dictation/search/result_order.h"
#include "platform/user_interface.h"
#include "support/language/text_ids.h"
#include "widgets/text.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <algorithm>
#include <cmath>
#include <utility>

namespace ov {

using widgets::text;

namespace {

constexpr int twipsPerInch = 1440;

constexpr std::int32_t skipSeconds = 5;

// Typing a letter jumps to a row that begins with it; beyond this the search for it would stall.
constexpr int mostRowsToJumpIn = 20000;

// The field whose header shows that the list is sorted by `field`: dates are sorted by a hidden
// column of their own.
std::int32_t indicatedField(std::int32_t field) {
    for (const modDictation::FieldDefinition& definition : modDictation::fieldDefinitions())
        if (modDictation::sortField(definition.id) == field && definition.id != field)
            return definition.id;
    return field;
}

} // namespace

ResultList::ResultList(QWidget* parent) : QTableView(parent), model_(new ResultModel(this)) {
    setObjectName(QStringLiteral("lvSearchResult"));
    setModel(model_);
    setItemDelegate(new ResultDelegate(this));
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setTabKeyNavigation(false);
    setShowGrid(false);
    setWordWrap(false);
    setAlternatingRowColors(true);
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    setTextElideMode(Qt::ElideRight);

    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    constexpr int air = 6;
    verticalHeader()->setDefaultSectionSize(fontMetrics().lineSpacing() + air);
    QHeaderView* header = horizontalHeader();
    header->setSectionsClickable(true);
    header->setSectionsMovable(true);
    header->setHighlightSections(false);
    header->setSortIndicatorShown(true);
    constexpr int narrowest = 18;
    header->setMinimumSectionSize(narrowest);
    connect(header, &QHeaderView::sectionClicked, this, &ResultList::sortRequested);
    connect(header, &QHeaderView::sectionResized, this, &ResultList::columnResized);
    connect(header, &QHeaderView::sectionMoved, this, &ResultList::layoutChangedByUser);
    header->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(header, &QWidget::customContextMenuRequested, this, &ResultList::columnsRequested);

    constexpr int whenDraggingRests = 500;
    saveLayout_.setSingleShot(true);
    saveLayout_.setInterval(whenDraggingRests);
    connect(&saveLayout_, &QTimer::timeout, this, [this] { settings_.setColumnLayout(layout_); });
}

void ResultList::setSettings(const ControlSettings& settings) {
    settings_ = settings;
    listSortKey_ = settings.listSortKey();
    listSortOrder_ = settings.listSortOrder();
    layout_ = settings.columnLayout();
}

void ResultList::saveSettings() {
    if (!saveLayout_.isActive())
        return;
    saveLayout_.stop();
    settings_.setColumnLayout(layout_);
}

void ResultList::setBusy(bool busy) {
    horizontalHeader()->setSectionsClickable(!busy);
}

void ResultList::removeAllRows() {
    model_->clear();
}

void ResultList::setHits(std::unique_ptr<modDictation::DictationList> hits) {
    model_->setHits(std::move(hits));
}

// ---- Sorting

// Dates are sorted by the hidden column that holds them as serial numbers.
int ResultList::sortColumnOf(int column) const {
    const std::int32_t field = model_->columns().at(static_cast<std::size_t>(column)).field;
    const int sortColumn = model_->columnOf(modDictation::sortField(field));
    return sortColumn < 0 ? column : sortColumn;
}

void ResultList::sortByColumn(int column) {
    const std::int32_t key = std::exchange(listSortKey_, sortColumnOf(column));
    const std::int32_t order = listSortOrder_;
    if (key == listSortKey_)
        listSortOrder_ = order == 0 ? 1 : 0;
    try {
        showSorted();
    } catch (...) {
        listSortKey_ = key;
        listSortOrder_ = order;
        showSortIndicator();
        throw;
    }
    settings_.setListSort(listSortKey_, listSortOrder_);
    showSortIndicator();
}

// -1 for a sort key that is no column.
int ResultList::indicatedColumn() const {
    const auto& columns = model_->columns();
    if (listSortKey_ < 0 || static_cast<std::size_t>(listSortKey_) >= columns.size())
        return -1;
    return model_->columnOf(indicatedField(columns[static_cast<std::size_t>(listSortKey_)].field));
}

void ResultList::showSortIndicator() {
    horizontalHeader()->setSortIndicator(
        indicatedColumn(), listSortOrder_ == 0 ? Qt::AscendingOrder : Qt::DescendingOrder);
}

void ResultList::showSorted() {
    const auto& columns = model_->columns();
    const auto key = static_cast<std::size_t>(listSortKey_);
    if (listSortKey_ < 0 || key >= columns.size() || model_->hits().empty()) {
        model_->showFirst(model_->hits().size());
        return;
    }
    std::vector<std::int32_t> order =
        modDictation::sortedOrder(model_->hits(), columns[key].field, listSortOrder_ != 0);
    const SelectedRows rows = selectedRows();
    model_->setOrder(std::move(order));
    select(rows);
}

// ---- Selection

void ResultList::forEachSelectedRow(const std::function<bool(int)>& visit) const {
    QItemSelection ranges = selectionModel()->selection();
    std::sort(ranges.begin(), ranges.end(),
              [](const auto& a, const auto& b) { return a.top() < b.top(); });
    int next = 0; // ranges of one row may overlap
    for (const QItemSelectionRange& range : std::as_const(ranges))
        for (int row = std::max(range.top(), next); row <= range.bottom(); next = ++row)
            if (!visit(row))
                return;
}

ResultList::SelectedRows ResultList::selectedRows() const {
    SelectedRows rows;
    if (currentIndex().isValid())
        rows.current = model_->hitOf(currentIndex().row());
    // More than a person picks one by one: only "all" is worth keeping.
    constexpr std::size_t most = 5000;
    int count = 0;
    forEachSelectedRow([&](int row) {
        ++count;
        if (rows.hits.size() < most)
            rows.hits.push_back(model_->hitOf(row));
        return true;
    });
    rows.all = count > 0 && count == model_->rowCount();
    if (rows.all || static_cast<std::size_t>(count) > most)
        rows.hits.clear();
    return rows;
}

void ResultList::select(const SelectedRows& rows) {
    if (rows.current > 0)
        if (const int row = model_->rowOf(rows.current); row >= 0) {
            selectionModel()->setCurrentIndex(
                model_->index(row, indicatedColumn() < 0 ? 0 : indicatedColumn()),
                QItemSelectionModel::NoUpdate);
            scrollTo(currentIndex());
        }
    if (rows.all) {
        selectAll();
        return;
    }
    QItemSelection selection;
    const std::vector<std::int32_t> sorted = [&] {
        std::vector<std::int32_t> hits = rows.hits;
        std::sort(hits.begin(), hits.end());
        return hits;
    }();
    for (int row = 0, left = static_cast<int>(sorted.size()); left > 0 && row < model_->rowCount();
         ++row)
        if (std::binary_search(sorted.begin(), sorted.end(), model_->hitOf(row))) {
            selection.select(model_->index(row, 0), model_->index(row, model_->columnCount() - 1));
            --left;
        }
    selectionModel()->select(selection, QItemSelectionModel::Select | QItemSelectionModel::Rows);
}

int ResultList::selectedRowCount() const {
    int count = 0;
    forEachSelectedRow([&count](int /*row*/) { return ++count > 0; });
    return count;
}

std::string ResultList::selectedPath() const {
    const QModelIndex current = currentIndex();
    if (current.isValid() && selectionModel()->isRowSelected(current.row()))
        return pathOf(model_->dictation(current.row()));
    std::string path;
    forEachSelectedRow([&](int row) {
        path = pathOf(model_->dictation(row));
        return false;
    });
    return path;
}

// ---- Columns

void ResultList::ApplyColumns() {
    const QScopedValueRollback applying(applying_, true);
    const SelectedRows rows = selectedRows();
    const auto& columns = model_->columns();
    const auto key = static_cast<std::size_t>(listSortKey_);
    const std::int32_t sortedField =
        listSortKey_ >= 0 && key < columns.size() ? columns[key].field : modDictation::noField;
    model_->setColumns();
    // The key is an index, so it must follow its column; -1 when that is gone.
    if (const int column = model_->columnOf(sortedField);
        sortedField != modDictation::noField && column != listSortKey_) {
        listSortKey_ = column;
        settings_.setListSort(listSortKey_, listSortOrder_);
    }
    applyWidths();
    placeColumns();
    showSortIndicator();
    select(rows);
}

void ResultList::applyWidths() {
    for (int i = 0; i < model_->columnCount(); ++i) {
        const ResultModel::Column& column = model_->columns()[static_cast<std::size_t>(i)];
        setColumnHidden(i, column.width == 0);
        if (column.width == 0)
            continue;
        const auto wanted =
            std::find_if(layout_.widths.begin(), layout_.widths.end(),
                         [&](const auto& width) { return width.first == column.field; });
        setColumnWidth(i, pixelsOf(wanted == layout_.widths.end() ? column.width : wanted->second));
    }
}

// Columns that the user has never moved stand behind the one they follow in the table of fields.
std::vector<std::int32_t> ResultList::columnOrder() const {
    std::vector<std::int32_t> order;
    for (const std::int32_t field : layout_.order)
        if (model_->columnOf(field) >= 0 &&
            std::find(order.begin(), order.end(), field) == order.end())
            order.push_back(field);
    auto behind = order.begin();
    for (const ResultModel::Column& column : model_->columns()) {
        auto place = std::find(order.begin(), order.end(), column.field);
        if (place == order.end())
            place = order.insert(behind, column.field);
        behind = place + 1;
    }
    return order;
}

void ResultList::placeColumns() {
    QHeaderView* header = horizontalHeader();
    int place = 0;
    for (const std::int32_t field : columnOrder())
        header->moveSection(header->visualIndex(model_->columnOf(field)), place++);
}

void ResultList::columnResized(int column, int /*oldSize*/, int newSize) {
    if (applying_ || newSize == 0)
        return;
    const std::int32_t field = model_->columns().at(static_cast<std::size_t>(column)).field;
    std::erase_if(layout_.widths, [field](const auto& width) { return width.first == field; });
    layout_.widths.emplace_back(field, twipsOf(newSize));
    layoutChangedByUser();
}

void ResultList::layoutChangedByUser() {
    if (applying_)
        return;
    const QHeaderView* header = horizontalHeader();
    std::vector<std::int32_t> shown;
    shown.reserve(static_cast<std::size_t>(header->count()));
    for (int place = 0; place < header->count(); ++place)
        shown.push_back(
            model_->columns().at(static_cast<std::size_t>(header->logicalIndex(place))).field);
    // Fields that are not shown now keep their place behind the one before them.
    std::vector<std::int32_t>& order = layout_.order;
    auto behind = shown.begin();
    for (const std::int32_t field : order) {
        auto place = std::find(shown.begin(), shown.end(), field);
        if (place == shown.end())
            place = shown.insert(behind, field);
        behind = place + 1;
    }
    order = std::move(shown);
    saveLayout_.start();
}

// The widths were chosen for lists whose digits are a sixteenth of an inch wide. Where those of the
// desktop's font are wider, so are the columns, or no date would fit.
double ResultList::pixelsPerTwip() const {
    constexpr double twipsPerDigit = twipsPerInch / 16.0;
    const double perInch = static_cast<double>(logicalDpiX()) / twipsPerInch;
    return std::max(perInch, fontMetrics().horizontalAdvance(QLatin1Char('0')) / twipsPerDigit);
}

int ResultList::pixelsOf(std::int32_t twips) const {
    constexpr std::int32_t widest = 100000;
    return static_cast<int>(std::lround(std::min(twips, widest) * pixelsPerTwip()));
}

std::int32_t ResultList::twipsOf(int pixels) const {
    return static_cast<std::int32_t>(std::lround(pixels / pixelsPerTwip()));
}

std::vector<int> ResultList::shownColumns() const {
    std::vector<int> columns;
    const QHeaderView* header = horizontalHeader();
    for (int place = 0; place < header->count(); ++place)
        if (const int column = header->logicalIndex(place); !isColumnHidden(column))
            columns.push_back(column);
    return columns;
}

std::vector<std::int32_t> ResultList::shownFields() const {
    std::vector<std::int32_t> fields;
    for (const int column : shownColumns())
        fields.push_back(model_->columns().at(static_cast<std::size_t>(column)).field);
    return fields;
}

std::vector<std::int32_t> ResultList::shownHits() const {
    std::vector<std::int32_t> hits;
    for (int row = 0; row < model_->rowCount(); ++row)
        hits.push_back(model_->hitOf(row));
    return hits;
}

std::vector<std::int32_t> ResultList::selectedHits() const {
    std::vector<std::int32_t> hits;
    forEachSelectedRow([&](int row) {
        hits.push_back(model_->hitOf(row));
        return true;
    });
    return hits;
}

// ---- Texts, keys and drawing

void ResultList::retranslate() {
    setAccessibleName(text(text_id::resultList));
    model_->retranslate();
    viewport()->update();
}

// A key that is held down counts once.
void ResultList::playKeyPressed(const QKeyEvent& event, bool enter) {
    if (event.isAutoRepeat())
        return;
    if (!enter)
        Q_EMIT playOrPauseRequested();
    else if (selectionModel()->hasSelection())
        Q_EMIT playRequested();
}

// Keys move by rows, as in a list: there is nothing to do in a single cell.
QModelIndex ResultList::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) {
    const int column = currentIndex().isValid() ? currentIndex().column() : 0;
    switch (action) {
    case MoveHome:
        return model_->index(0, column);
    case MoveEnd:
        return model_->index(model_->rowCount() - 1, column);
    case MoveLeft:
    case MoveRight: {
        QScrollBar* bar = horizontalScrollBar();
        bar->triggerAction(action == MoveLeft ? QAbstractSlider::SliderSingleStepSub
                                              : QAbstractSlider::SliderSingleStepAdd);
        return currentIndex();
    }
    default:
        return QTableView::moveCursor(action, modifiers);
    }
}

void ResultList::keyPressEvent(QKeyEvent* event) {
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    const bool space = event->key() == Qt::Key_Space && event->modifiers() == Qt::NoModifier;
    if (event->matches(QKeySequence::Copy))
        Q_EMIT copyRequested();
    else if (enter || space)
        playKeyPressed(*event, enter);
    else if (event->modifiers() == Qt::ControlModifier &&
             (event->key() == Qt::Key_Left || event->key() == Qt::Key_Right))
        Q_EMIT skipRequested(event->key() == Qt::Key_Left ? -skipSeconds : skipSeconds);
    else
        QTableView::keyPressEvent(event);
}

void ResultList::mouseDoubleClickEvent(QMouseEvent* event) {
    QTableView::mouseDoubleClickEvent(event);
    if (event->button() == Qt::LeftButton && indexAt(event->pos()).isValid())
        Q_EMIT playRequested();
}

void ResultList::keyboardSearch(const QString& search) {
    if (model_->rowCount() <= mostRowsToJumpIn)
        QTableView::keyboardSearch(search);
}

void ResultList::paintEvent(QPaintEvent* event) {
    QTableView::paintEvent(event);
    if (isEmpty())
        paintListHint(*viewport(), text(text_id::resultHint));
}

} // namespace ov
