// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "control/results/result_list.h"

#include "control/accessible/accessible_results.h"
#include "control/results/painting/result_delegate.h"
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

constexpr QKeyCombination copyFilesKey = Qt::CTRL | Qt::SHIFT | Qt::Key_C;

// Typing a letter jumps to a row that begins with it; beyond this the search for it would stall.
constexpr int mostRowsToJumpIn = 20000;

constexpr int quietMs = 1000; // after which nothing else seems to be wanted

} // namespace

ResultList::ResultList(QWidget* parent)
    : QTableView(parent), model_(new ResultModel(this)), selection_(*this, *model_) {
    setObjectName(QStringLiteral("lvSearchResult"));
    AccessibleResults::install();
    setModel(model_);
    setItemDelegate(new ResultDelegate(*this));
    setUp();
    columns_ = new ResultColumns(*this, *model_);
    connect(columns_, &ResultColumns::clicked, this,
            [this](int column) { Q_EMIT sortRequested(clickedSort(column)); });
    connect(columns_, &ResultColumns::menuRequested, this, &ResultList::openColumnMenu);
    filter_ = new QuickFilter(this, [this] { return filterSource(); });
    connect(filter_, &QuickFilter::found, this, &ResultList::takeFound);
    // The first word that somebody filters by is answered at once then, among a million rows too.
    prepareSoon_.setSingleShot(true);
    prepareSoon_.setInterval(quietMs);
    prepareSoon_.callOnTimeout(this, &ResultList::prepareFilter);
}

void ResultList::setUp() {
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setTabKeyNavigation(false);
    setShowGrid(false);
    setWordWrap(false);
    setAlternatingRowColors(true);
    setDragEnabled(true);
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
    secondSort_ = settings.secondSort();
    columns_->setSettings(settings);
}

void ResultList::setBusy(bool busy) {
    busy_ = busy;
    horizontalHeader()->setSectionsClickable(!busy);
    if (!busy)
        showSortIndicator(); // of a wish that came to nothing
    if (!busy && found_)     // from the event loop, as a command may just be ending
        QMetaObject::invokeMethod(this, &ResultList::filterFound, Qt::QueuedConnection);
}

void ResultList::setQuiet(bool quiet) {
    if (quiet)
        prepareSoon_.start();
    else
        prepareSoon_.stop();
}

void ResultList::removeAllRows() {
    model_->clear();
    filterAfresh();
}

void ResultList::setHits(std::unique_ptr<modDictation::DictationList> hits) {
    model_->setHits(std::move(hits));
    filterAfresh();
}

// ---- Columns

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
    else if (enter && event->modifiers() == Qt::AltModifier)
        Q_EMIT detailsRequested();
    else if (event->keyCombination() == copyFilesKey)
        Q_EMIT copyFilesRequested();
    else if (enter || space)
        playKeyPressed(*event, enter);
    else if (event->text() == QLatin1String("/"))
        Q_EMIT filterRequested();
    else
        QTableView::keyPressEvent(event);
}

void ResultList::mouseDoubleClickEvent(QMouseEvent* event) {
    QTableView::mouseDoubleClickEvent(event);
    if (event->button() == Qt::LeftButton && indexAt(event->pos()).isValid())
        Q_EMIT playRequested();
}

// Not the table's own, which makes a list of all cells that are selected for the screen reader: it
// hears of one row at most.
void ResultList::selectionChanged(const QItemSelection& selected,
                                  const QItemSelection& deselected) {
    QAbstractItemView::selectionChanged(selected, deselected);
    if (!QAccessible::isActive())
        return;
    QAccessibleEvent event(this, QAccessible::SelectionWithin);
    QAccessible::updateAccessibility(&event);
}

void ResultList::keyboardSearch(const QString& search) {
    if (model_->rowCount() <= mostRowsToJumpIn)
        QTableView::keyboardSearch(search);
}

} // namespace ov
