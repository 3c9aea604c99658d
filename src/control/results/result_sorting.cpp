// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// By what the list is sorted.

#include "control/results/result_list.h"
#include "dictation/field_table.h"

#include <QHeaderView>
#include <algorithm>
#include <functional>
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

// The same dictations among other hits. Of more than are soon found the current one alone.
ResultSelection::Kept amongOthers(const ResultSelection::Kept& kept,
                                  const modDictation::DictationList& hits,
                                  const modDictation::DictationList& others) {
    constexpr std::size_t soonFound = 100;
    const auto among = [&](std::int32_t hit) { return hit > 0 ? others.find(hits[hit]) : 0; };
    ResultSelection::Kept found;
    found.current = among(kept.current);
    const bool ofMany = kept.all && kept.hits.empty();
    if (ofMany || kept.hits.size() > soonFound) {
        if (found.current > 0 && (ofMany || std::ranges::binary_search(kept.hits, kept.current)))
            found.hits = {found.current};
    } else
        for (const std::int32_t hit : kept.hits)
            if (const std::int32_t other = among(hit); other > 0)
                found.hits.push_back(other);
    std::ranges::sort(found.hits);
    return found;
}

// Takes back what was begun, unless it is told to forget it.
class Undo {
public:
    explicit Undo(std::function<void()> takeBack) : takeBack_(std::move(takeBack)) {}
    ~Undo() {
        if (takeBack_)
            takeBack_();
    }
    Undo(const Undo&) = delete;
    Undo& operator=(const Undo&) = delete;

    void forget() { takeBack_ = nullptr; }

private:
    std::function<void()> takeBack_;
};

// The titles are dim as long as they tell more than the rows do.
class DimTitles {
public:
    explicit DimTitles(QHeaderView& titles) : titles_(titles) { titles_.setEnabled(false); }
    ~DimTitles() { titles_.setEnabled(true); }
    DimTitles(const DimTitles&) = delete;
    DimTitles& operator=(const DimTitles&) = delete;

private:
    QHeaderView& titles_;
};

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

modDictation::SortKey ResultList::clickedSort(int column) const {
    const bool again = sortColumnOf(column) == listSortKey_;
    return {model_->columns().at(static_cast<std::size_t>(column)).field,
            again ? listSortOrder_ == 0 : listSortOrder_ != 0};
}

void ResultList::sortBy(modDictation::SortKey key, const std::function<bool()>& goOn) {
    const int column = model_->columnOf(key.field);
    if (column < 0) // hidden meanwhile
        return;
    const std::int32_t sortKey = std::exchange(listSortKey_, sortColumnOf(column));
    const std::int32_t order = std::exchange(listSortOrder_, key.descending ? 1 : 0);
    Undo undo([=, this] {
        listSortKey_ = sortKey;
        listSortOrder_ = order;
        showSortIndicator();
    });
    showSortIndicator();
    if (!sortRows(goOn))
        return;
    undo.forget();
    settings_.setListSort(listSortKey_, listSortOrder_);
}

void ResultList::sortSecondBy(modDictation::SortKey key, const std::function<bool()>& goOn) {
    Undo undo([this, before = std::exchange(secondSort_, key)] { secondSort_ = before; });
    if (!sortRows(goOn))
        return;
    undo.forget();
    settings_.setSecondSort(secondSort_);
}

void ResultList::showWishedSort(modDictation::SortKey key) {
    horizontalHeader()->setSortIndicator(model_->columnOf(key.field),
                                         key.descending ? Qt::DescendingOrder : Qt::AscendingOrder);
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

// False, with the rows as they were, when `goOn` answered no once their order was found.
bool ResultList::sortRows(const std::function<bool()>& goOn) {
    const std::int32_t field = sortedField();
    if (field == modDictation::noField || model_->hits().empty()) {
        model_->showFirst(model_->hits().size());
        return true;
    }
    const DimTitles busy(*horizontalHeader());
    const std::int32_t second = modDictation::fieldDefinition(secondSort_.field).sortField;
    auto order =
        model_->sortedOrder({field, listSortOrder_ != 0}, {second, secondSort_.descending});
    if (!goOn())
        return false;
    const ResultSelection::Kept rows = selection_.keep();
    model_->setOrder(std::move(order));
    selection_.restore(rows, indicatedColumn());
    return true;
}

void ResultList::replaceHits(std::unique_ptr<modDictation::DictationList> hits) {
    const std::int32_t field = sortedField();
    const std::int32_t second = modDictation::fieldDefinition(secondSort_.field).sortField;
    std::vector<std::int32_t> order;
    if (field != modDictation::noField && !hits->empty())
        order = modDictation::ResultOrders().sorted(*hits, {field, listSortOrder_ != 0},
                                                    {second, secondSort_.descending});
    const ResultSelection::Kept rows = amongOthers(selection_.keep(), model_->hits(), *hits);
    const std::string playing = model_->playing();
    model_->setHits(std::move(hits));
    if (order.empty())
        model_->showFirst(model_->hits().size());
    else
        model_->setOrder(std::move(order));
    selection_.restore(rows, indicatedColumn());
    model_->setPlaying(playing);
    filterAfresh();
}

} // namespace ov
