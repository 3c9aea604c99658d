// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// What other programs of the session may ask of the control beside its player.

#include "control/ctrlOVSearch.h"
#include "dictation/dictation.h"

#include <algorithm>
#include <utility>

namespace ov {

// A command that is dropped takes its answer with it, and who asked hears that we are busy. None
// takes the place of what the user has asked for meanwhile.
void ctrlOVSearch::joinBus() {
    if (!settings_.isPlayerOnBus())
        return;
    const auto postForOthers = [this](const char* procedure, std::function<void()> run) {
        if (!commands_.hasNext())
            post(procedure, std::move(run));
    };
    BusCommands commands;
    commands.hasRow = [this](int step) { return rowBeside(step) >= 0; };
    commands.playRow = [this, postForOthers](int step, const BusCommands::Done& done) {
        postForOthers("PlayRow", [this, step, done] {
            playRow(step);
            done({});
        });
    };
    commands.savedSearches = [this](const BusCommands::Done& done) {
        const Frame frame(*this);
        tellSavedSearches(done);
    };
    commands.search = [this, postForOthers](const std::string& name,
                                            const BusCommands::Done& done) {
        postForOthers("SearchByName", [this, name, done] { searchByName(name, done); });
    };
    commands.wantsShortcuts = [this] { return settings_.offersPlayerShortcuts(); };
    commands.declineShortcuts = [this] { settings_.declinePlayerShortcuts(); };
    bus_ = makePlayerBus(*view_.picPlayer, std::move(commands));
    if (!bus_)
        return;
    const auto tell = [this] {
        if (bus_)
            bus_->tell();
    };
    const ResultList& list = *view_.lvSearchResult;
    connect(list.selectionModel(), &QItemSelectionModel::selectionChanged, this, tell);
    connect(list.model(), &QAbstractItemModel::rowsInserted, this, tell);
    connect(list.model(), &QAbstractItemModel::layoutChanged, this, tell);
    connect(list.model(), &QAbstractItemModel::modelReset, this, tell);
}

// Beside the dictation that plays, or else the selected one; -1 for none.
int ctrlOVSearch::rowBeside(int step) const {
    const ResultList& list = *view_.lvSearchResult;
    const int playing = list.results().playingRow();
    const int row = (playing >= 0 ? playing : list.currentIndex().row()) + step;
    return row < list.results().rowCount() ? std::max(row, -1) : -1;
}

void ctrlOVSearch::playRow(int step) {
    const int row = rowBeside(step);
    if (row < 0)
        return;
    view_.lvSearchResult->selectPath(
        modDictation::pathOf(view_.lvSearchResult->results().dictation(row)));
    view_.picPlayer->PlayerPlay();
}

void ctrlOVSearch::tellSavedSearches(const BusCommands::Done& done) const {
    BusCommands::Answer answer;
    for (const SavedSearch& saved : savedSearches_.saved())
        answer.texts.push_back(saved.name);
    done(answer);
}

// Who asked waits for its beginning only.
void ctrlOVSearch::searchByName(const std::string& name, const BusCommands::Done& done) {
    const std::vector<SavedSearch> saved = savedSearches_.saved();
    const auto found = std::ranges::find(saved, name, &SavedSearch::name);
    if (found == saved.end())
        return done(
            {{}, "There is no saved search of that name; SavedSearches tells which there are."});
    done({});
    bringSearch(*found);
    if (!isEnding())
        runSearch(SearchRun::Questions::asks);
}

} // namespace ov
