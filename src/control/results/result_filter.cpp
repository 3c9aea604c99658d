// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// How the list shows only the rows that hold the words typed above it.

#include "control/results/result_list.h"
#include "widgets/text.h"

#include <algorithm>
#include <utility>

namespace ov {

modDictation::RowTexts::Source ResultList::filterSource() const {
    return {.hits = model_->sharedHits(), .fields = shownFields(), .codes = {}};
}

void ResultList::prepareFilter() {
    if (!isEmpty())
        filter_->prepare();
}

void ResultList::filterBy(const QString& text) {
    filterText_ = text.trimmed();
    for (QChar& character : filterText_)
        if (character.isSpace())
            character = u' '; // a single one each, as quoted texts are compared with them
    filter_->find(widgets::toUtf8(filterText_));
}

// Commands count on the rows: what was found waits until none is at work.
void ResultList::takeFound(const QuickFilter::Found& found) {
    found_ = found;
    if (!busy_)
        Q_EMIT filterFound();
}

void ResultList::filterAfresh() {
    found_.reset();
    filter_->forget();
    if (!filterText_.isEmpty())
        filterBy(filterText_);
    else if (model_->kept() != nullptr) // that all are wanted was not shown yet
        takeFound({});
}

void ResultList::showFound() {
    if (!found_)
        return;
    ResultSelection::Kept rows = selection_.keep();
    rows.all = false; // all of others
    QuickFilter::Found found = std::move(*std::exchange(found_, std::nullopt));
    filterReading_ = std::move(found.reading);
    model_->setKept(std::move(found.kept));
    selection_.restore(rows, indicatedColumn());
    if (!currentIndex().isValid())
        goToSelected();
}

// As it is selected; without a selection to the first row.
void ResultList::goToSelected() {
    if (!selectionModel()->hasSelection()) {
        selectFirst();
        return;
    }
    selected().forEachRow([this](int row) {
        goToRow(row, QItemSelectionModel::NoUpdate);
        return false;
    });
}

void ResultList::selectFirst() {
    if (!isEmpty())
        goToRow(0);
}

void ResultList::selectPath(const std::string& path) {
    const std::int32_t hit = model_->hitOfPath(path);
    if (const int row = hit > 0 ? model_->rowOf(hit) : -1; row >= 0)
        goToRow(row);
}

void ResultList::goToRow(int row, QItemSelectionModel::SelectionFlags command) {
    const QModelIndex index = model_->index(row, std::max(indicatedColumn(), 0));
    selectionModel()->setCurrentIndex(index, command);
    scrollTo(index);
}

} // namespace ov
