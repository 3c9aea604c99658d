// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "control/results/result_selection.h"

#include "control/results/result_model.h"

#include <QTableView>
#include <algorithm>
#include <utility>

namespace ov {

void ResultSelection::forEachRow(const std::function<bool(int)>& visit) const {
    QItemSelection ranges = view_.selectionModel()->selection();
    std::sort(ranges.begin(), ranges.end(),
              [](const auto& a, const auto& b) { return a.top() < b.top(); });
    int next = 0; // ranges of one row may overlap
    for (const QItemSelectionRange& range : std::as_const(ranges))
        for (int row = std::max(range.top(), next); row <= range.bottom(); next = ++row)
            if (!visit(row))
                return;
}

int ResultSelection::count() const {
    int count = 0;
    forEachRow([&count](int /*row*/) { return ++count > 0; });
    return count;
}

std::vector<std::int32_t> ResultSelection::hits() const {
    std::vector<std::int32_t> hits;
    forEachRow([&](int row) {
        hits.push_back(model_.hitOf(row));
        return true;
    });
    return hits;
}

std::string ResultSelection::path() const {
    const QModelIndex current = view_.currentIndex();
    if (current.isValid() && view_.selectionModel()->isRowSelected(current.row()))
        return model_.path(current.row());
    std::string path;
    forEachRow([&](int row) {
        path = model_.path(row);
        return false;
    });
    return path;
}

ResultSelection::Kept ResultSelection::keep() const {
    Kept kept;
    if (view_.currentIndex().isValid())
        kept.current = model_.hitOf(view_.currentIndex().row());
    // More than a person picks one by one: only "all" is worth keeping.
    constexpr std::size_t most = 5000;
    int selected = 0;
    forEachRow([&](int row) {
        ++selected;
        if (kept.hits.size() < most)
            kept.hits.push_back(model_.hitOf(row));
        return true;
    });
    kept.all = selected > 0 && selected == model_.rowCount();
    if (static_cast<std::size_t>(selected) > most)
        kept.hits.clear();
    std::sort(kept.hits.begin(), kept.hits.end());
    return kept;
}

void ResultSelection::restoreCurrent(std::int32_t hit, int column) const {
    const int row = hit > 0 ? model_.rowOf(hit) : -1;
    if (row < 0)
        return;
    view_.selectionModel()->setCurrentIndex(model_.index(row, std::max(column, 0)),
                                            QItemSelectionModel::NoUpdate);
    view_.scrollTo(view_.currentIndex());
}

void ResultSelection::restore(const Kept& kept, int column) const {
    restoreCurrent(kept.current, column);
    if (kept.all) {
        view_.selectAll();
        return;
    }
    QItemSelection selection;
    auto left = kept.hits.size();
    for (int row = 0; left > 0 && row < model_.rowCount(); ++row)
        if (std::binary_search(kept.hits.begin(), kept.hits.end(), model_.hitOf(row))) {
            selection.select(model_.index(row, 0), model_.index(row, model_.columnCount() - 1));
            --left;
        }
    view_.selectionModel()->select(selection,
                                   QItemSelectionModel::Select | QItemSelectionModel::Rows);
}

} // namespace ov
