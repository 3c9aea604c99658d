// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// By what the list is sorted.

#include "control/results/result_list.h"
#include "dictation/field_table.h"

#include <QHeaderView>
#include <utility>

namespace ov {

namespace {

// The field whose header shows that the list is sorted by `field`: dates are sorted by a hidden
// column of their own.
std::int32_t indicatedField(std::int32_t field) {
    for (const modDictation::FieldDefinition& definition : modDictation::fieldDefinitions())
        if (definition.sortField == field && definition.id != field)
            return definition.id;
    return field;
}

// Looking for a selected path in a longer list would be felt.
constexpr std::int32_t mostHitsToLookThrough = 20000;

// The hit of that path, 0 without one.
std::int32_t hitOfPath(const modDictation::DictationList& hits, const std::string& path) {
    if (path.empty() || hits.size() > mostHitsToLookThrough)
        return 0;
    for (std::int32_t hit = 1; hit <= hits.size(); ++hit)
        if (modDictation::pathOf(hits[hit]) == path)
            return hit;
    return 0;
}

} // namespace

// The field that the sort key names; noField for a key that is no column.
std::int32_t ResultList::sortedField() const {
    const auto& columns = model_->columns();
    const auto key = static_cast<std::size_t>(listSortKey_);
    return listSortKey_ >= 0 && key < columns.size() ? columns[key].field : modDictation::noField;
}

// Dates are sorted by the hidden column that holds them as serial numbers.
int ResultList::sortColumnOf(int column) const {
    const std::int32_t field = model_->columns().at(static_cast<std::size_t>(column)).field;
    const int sortColumn = model_->columnOf(modDictation::fieldDefinition(field).sortField);
    return sortColumn < 0 ? column : sortColumn;
}

void ResultList::sortByColumn(int column) {
    const bool again = sortColumnOf(column) == listSortKey_;
    sortBy(column, again ? listSortOrder_ == 0 : listSortOrder_ != 0);
}

void ResultList::sortBy(int column, bool descending) {
    const std::int32_t key = std::exchange(listSortKey_, sortColumnOf(column));
    const std::int32_t order = std::exchange(listSortOrder_, descending ? 1 : 0);
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

void ResultList::sortSecondBy(modDictation::SortKey key) {
    const modDictation::SortKey before = std::exchange(secondSort_, key);
    try {
        showSorted();
    } catch (...) {
        secondSort_ = before;
        throw;
    }
    settings_.setSecondSort(secondSort_);
}

modDictation::SortKey ResultList::sortedBy() const {
    return {indicatedField(sortedField()), listSortOrder_ != 0};
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
    const std::int32_t second = modDictation::fieldDefinition(secondSort_.field).sortField;
    auto order =
        model_->sortedOrder({field, listSortOrder_ != 0}, {second, secondSort_.descending});
    const ResultSelection::Kept rows = selection_.keep();
    model_->setOrder(std::move(order));
    selection_.restore(rows, indicatedColumn());
}

void ResultList::replaceHits(std::unique_ptr<modDictation::DictationList> hits) {
    const std::int32_t field = sortedField();
    const std::int32_t second = modDictation::fieldDefinition(secondSort_.field).sortField;
    std::vector<std::int32_t> order;
    if (field != modDictation::noField && !hits->empty())
        order = modDictation::ResultOrders().sorted(*hits, {field, listSortOrder_ != 0},
                                                    {second, secondSort_.descending});
    const std::int32_t selected = hitOfPath(*hits, selection_.path());
    const std::string playing = model_->playing();
    model_->setHits(std::move(hits));
    if (order.empty())
        model_->showFirst(model_->hits().size());
    else
        model_->setOrder(std::move(order));
    if (selected > 0)
        selection_.restore({.current = selected, .hits = {selected}}, indicatedColumn());
    model_->setPlaying(playing);
    filterAfresh();
}

} // namespace ov
