// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// What can be asked of the titles of the list of hits, and what follows.

#include "control/ctrlOVSearch.h"
#include "control/wait_cursor.h"
#include "dialogs/frmSearchResultColumns.h"
#include "dictation/field_table.h"

#include <optional>

namespace ov {

void ctrlOVSearch::connectHeader() {
    ResultList* results = view_.lvSearchResult;
    connect(results, &ResultList::sortRequested, this, [this](modDictation::SortKey key) {
        view_.lvSearchResult->showWishedSort(key); // the sort may have to wait
        post("lvSearchResult_ColumnClick", [this, key] {
            changeHeader({HeaderChoice::sort, key});
        });
    });
    connect(results, &ResultList::headerRequested, this, [this](HeaderChoice choice) {
        post("HeaderMenu", [this, choice] { changeHeader(choice); });
    });
}

void ctrlOVSearch::changeHeader(const HeaderChoice& choice) {
    ResultList& list = *view_.lvSearchResult;
    const int column = list.results().columnOf(choice.key.field);
    if (column < 0 && choice.isOfAColumn()) // the columns have changed while the menu was open
        return;
    std::optional<WaitCursor> waiting;
    if (choice.what != HeaderChoice::choose)
        waiting.emplace();
    switch (choice.what) {
    case HeaderChoice::sort:
    case HeaderChoice::sortSecond:
        sortRows(choice);
        break;
    case HeaderChoice::fitWidth:
        list.columns().fitWidth(column);
        break;
    case HeaderChoice::moveLeft:
    case HeaderChoice::moveRight:
        list.columns().moveBy(column, choice.what == HeaderChoice::moveLeft ? -1 : 1);
        break;
    case HeaderChoice::show:
    case HeaderChoice::hide:
        showColumns([&choice](const modDictation::SearchField& field) {
            return field.Id == choice.key.field ? choice.what == HeaderChoice::show : field.Visible;
        });
        break;
    case HeaderChoice::choose:
        chooseColumns();
        break;
    case HeaderChoice::reset:
        list.columns().reset();
        showColumns([](const modDictation::SearchField& field) {
            return modDictation::fieldDefinition(field.Id).visible;
        });
        break;
    }
}

void ctrlOVSearch::sortRows(const HeaderChoice& choice) {
    ResultList& list = *view_.lvSearchResult;
    enter(ControlState::sorting);
    const auto goOn = [stop = stop_.get_token()] { return !stop.stop_requested(); };
    if (choice.what == HeaderChoice::sort)
        list.sortBy(choice.key, goOn);
    else
        list.sortSecondBy(choice.key, goOn);
}

void ctrlOVSearch::showColumns(
    const std::function<bool(const modDictation::SearchField&)>& isVisible) {
    for (modDictation::SearchField& field : modDictation::searchFields())
        if (field.Selectable)
            field.Visible = isVisible(field);
    saveColumns();
}

void ctrlOVSearch::saveColumns() {
    modDictation::SaveColumnSettings();
    if (isEnding()) // it asked the host where to
        return;
    view_.lvSearchResult->ApplyColumns();
}

void ctrlOVSearch::chooseColumns() {
    enter(ControlState::asking);
    frmSearchResultColumns dialog(this);
    dialog.exec();
    if (!dialog.OKPressed() || isEnding())
        return;
    saveColumns();
}

} // namespace ov
