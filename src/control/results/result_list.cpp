// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "control/results/result_list.h"

#include "control/results/result_delegate.h"
#include "platform/user_interface.h"
#include "support/language/text_ids.h"
#include "widgets/text.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QScrollBar>
#include <utility>

namespace ov {

using widgets::text;

namespace {

constexpr std::int32_t skipSeconds = 5;

// Typing a letter jumps to a row that begins with it; beyond this the search for it would stall.
constexpr int mostRowsToJumpIn = 20000;

// The field whose header shows that the list is sorted by `field`: dates are sorted by a hidden
// column of their own.
std::int32_t indicatedField(std::int32_t field) {
    for (const modDictation::FieldDefinition& definition : modDictation::fieldDefinitions())
        if (definition.sortField == field && definition.id != field)
            return definition.id;
    return field;
}

} // namespace

ResultList::ResultList(QWidget* parent)
    : QTableView(parent), model_(new ResultModel(this)), selection_(*this, *model_) {
    setObjectName(QStringLiteral("lvSearchResult"));
    setModel(model_);
    setItemDelegate(new ResultDelegate(this));
    setUp();
    columns_ = new ResultColumns(*this, *model_);
    connect(columns_, &ResultColumns::clicked, this, &ResultList::sortRequested);
    connect(columns_, &ResultColumns::menuRequested, this, &ResultList::columnsRequested);
    filter_ = new QuickFilter(this, [this] { return filterSource(); });
    connect(filter_, &QuickFilter::found, this, &ResultList::takeFound);
}

void ResultList::setUp() {
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setTabKeyNavigation(false);
    setShowGrid(false);
    setWordWrap(false);
    setAlternatingRowColors(true);
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    constexpr int air = 6;
    verticalHeader()->setDefaultSectionSize(fontMetrics().lineSpacing() + air);
}

void ResultList::setSettings(const ControlSettings& settings) {
    settings_ = settings;
    listSortKey_ = settings.listSortKey();
    listSortOrder_ = settings.listSortOrder();
    columns_->setSettings(settings);
}

void ResultList::setBusy(bool busy) {
    busy_ = busy;
    horizontalHeader()->setSectionsClickable(!busy);
    if (!busy && found_) // from the event loop, as a command may just be ending
        QMetaObject::invokeMethod(this, &ResultList::filterFound, Qt::QueuedConnection);
}

void ResultList::removeAllRows() {
    model_->clear();
    filterAfresh();
}

void ResultList::setHits(std::unique_ptr<modDictation::DictationList> hits) {
    model_->setHits(std::move(hits));
    filterAfresh();
}

// ---- Sorting

// Dates are sorted by the hidden column that holds them as serial numbers.
int ResultList::sortColumnOf(int column) const {
    const std::int32_t field = model_->columns().at(static_cast<std::size_t>(column)).field;
    const int sortColumn = model_->columnOf(modDictation::fieldDefinition(field).sortField);
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
    const std::int32_t field = sortedField();
    return field == modDictation::noField ? -1 : model_->columnOf(indicatedField(field));
}

void ResultList::showSortIndicator() {
    horizontalHeader()->setSortIndicator(
        indicatedColumn(), listSortOrder_ == 0 ? Qt::AscendingOrder : Qt::DescendingOrder);
}

void ResultList::showSorted() {
    const std::int32_t field = sortedField();
    if (field == modDictation::noField || model_->hits().empty()) {
        model_->showFirst(model_->hits().size());
        return;
    }
    auto order = model_->sortedOrder(field, listSortOrder_ != 0);
    const ResultSelection::Kept rows = selection_.keep();
    model_->setOrder(std::move(order));
    selection_.restore(rows, indicatedColumn());
}

// ---- Columns

// The field that the sort key names; noField for a key that is no column.
std::int32_t ResultList::sortedField() const {
    const auto& columns = model_->columns();
    const auto key = static_cast<std::size_t>(listSortKey_);
    return listSortKey_ >= 0 && key < columns.size() ? columns[key].field : modDictation::noField;
}

void ResultList::ApplyColumns() {
    const ResultSelection::Kept rows = selection_.keep();
    const std::int32_t field = sortedField();
    columns_->apply();
    filterAfresh();
    // The key is an index, so it must follow its column; -1 when that is gone.
    if (const int column = model_->columnOf(field);
        field != modDictation::noField && column != listSortKey_) {
        listSortKey_ = column;
        settings_.setListSort(listSortKey_, listSortOrder_);
    }
    showSortIndicator();
    selection_.restore(rows, indicatedColumn());
}

std::vector<std::int32_t> ResultList::shownHits() const {
    std::vector<std::int32_t> hits;
    for (int row = 0; row < model_->rowCount(); ++row)
        hits.push_back(model_->hitOf(row));
    return hits;
}

// ---- Texts, keys and drawing

void ResultList::retranslate() {
    setAccessibleName(text(text_id::resultList));
    model_->retranslate();
    filterAfresh();
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
    else if (event->text() == QLatin1String("/"))
        Q_EMIT filterRequested();
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

} // namespace ov
