// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// What can be asked of the list of hits, and what follows.

#include "control/catalogue/known_values.h"
#include "control/ctrlOVSearch.h"
#include "control/filter/filter_suggestions.h"
#include "control/results/shown_rows.h"
#include "control/wait_cursor.h"
#include "dialogs/details_dialog.h"
#include "platform/user_interface.h"
#include "support/language/text_ids.h"
#include "support/modUtil.h"
#include "support/patient_files.h"
#include "widgets/spoken.h"
#include "widgets/text.h"

#include <QItemSelectionModel>
#include <QMenu>
#include <memory>
#include <optional>
#include <utility>

namespace ov {

// The player's own commands neither leave the control nor let messages be handled, and are wanted
// while a command runs: they go straight to it.
void ctrlOVSearch::connectResults() {
    ResultList* results = view_.lvSearchResult;
    const PlayerPanel* player = view_.picPlayer;
    connect(results->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            [this] { view_.describeSearchButtons(); });
    connect(results, &ResultList::playRequested, player, &PlayerPanel::PlayerPlay);
    connect(results, &ResultList::playOrPauseRequested, player, &PlayerPanel::playOrPause);
    connect(results, &ResultList::stopPlayingRequested, player, &PlayerPanel::PlayerStop);
    connect(player, &PlayerPanel::choicesMade, this,
            [this](const PlayerChoices& choices, const PlayerChoices& before) {
                playerChoices_.keep(choices, before);
            });
    connect(player, &PlayerPanel::volumeChosen, this,
            [this](std::int32_t volume) { playerChoices_.keep(volume); });
    connect(&player->outputs(), &OutputMenu::outputChosen, this,
            [this](const std::string& name) { settings_.setOutput(name); });

    const auto posted = [this](const char* procedure, auto run) {
        return [this, procedure, run] { post(procedure, run); };
    };
    connect(results, &ResultList::showLogRequested, this,
            [this] { cmdSearchOptions_Click(ControlView::log); });
    connect(results, &ResultList::columnsRequested, this,
            [this] { cmdSearchOptions_Click(ControlView::columns); });
    connect(results, &ResultList::detailsRequested, this,
            posted("ShowDetails", [this] { showDetails(); }));
    connect(results, &ResultList::searchAfreshRequested, this, &ctrlOVSearch::searchAfresh);
}

void ctrlOVSearch::connectHandingOut() {
    ResultList* results = view_.lvSearchResult;
    const auto posted = [this](const char* procedure, auto run) {
        return [this, procedure, run] { post(procedure, run); };
    };
    connect(results, &ResultList::copyRequested, this, posted("CopyRows", [this, results] {
                copyRows([results](const auto& goOn) { results->copySelectedRows(goOn); });
            }));
    connect(results, &ResultList::copyPathsRequested, this, posted("CopyPaths", [this, results] {
                copyRows([results](const auto& goOn) { results->copySelectedPaths(goOn); });
            }));
    connect(results, &ResultList::openFolderRequested, this, posted("OpenFolder", [this, results] {
                if (!presentPath().empty() && !isEnding())
                    results->openFolder();
            }));
    connect(results, &ResultList::copyFilesRequested, this, posted("CopyFiles", [this, results] {
                if (results->selected().count() == 1 && (presentPath().empty() || isEnding()))
                    return;
                copyRows([results](const auto& goOn) { results->copySelectedFiles(goOn); });
            }));
    connect(results, &ResultList::dragRequested, this,
            posted("DragFiles", [results] { results->dragSelectedFiles(); }));
}

// The mark of what is in the player, and the way back from there.
void ctrlOVSearch::connectPlaying() {
    connect(view_.picPlayer, &PlayerPanel::fileChanged, view_.lvSearchResult,
            &ResultList::markPlaying);
    connect(view_.picPlayer, &PlayerPanel::fileMissing, this, [this](const std::string& path) {
        post("PlayMoved", [this, path] { playMoved(path); });
    });
    connect(view_.picPlayer, &PlayerPanel::rowRequested, this, [this](const std::string& path) {
        post("ShowPlaying", [this, path] { showRow(path); });
    });
}

// Takes back a filter that leaves the row out.
void ctrlOVSearch::showRow(const std::string& path) {
    ResultList& list = *view_.lvSearchResult;
    const std::int32_t hit = list.results().hitOfPath(path);
    if (hit > 0 && list.results().rowOf(hit) < 0) {
        view_.txtResultFilter->clear();
        list.showFound();
        showOutcome(view_, outcome_);
    }
    if (hit <= 0) { // another search does not list it
        platform::userInterface().beep();
        return;
    }
    list.selectPath(path);
    list.setFocus();
}

void ctrlOVSearch::showDetails() {
    const std::string path = presentPath();
    if (path.empty() || isEnding())
        return;
    enter(ControlState::asking);
    DetailsDialog dialog(path, this);
    dialog.exec();
}

// The first hit, and the keyboard, if it is where the search was asked for by key.
void ctrlOVSearch::goToHits() {
    ResultList& list = *view_.lvSearchResult;
    const QPointer<QWidget> from = std::exchange(searchedFrom_, nullptr);
    if (list.isEmpty())
        return;
    if (!list.selectionModel()->hasSelection())
        list.selectFirst();
    // A button that was off meanwhile has left it to the splitter.
    const QWidget* focus = window()->focusWidget();
    if (from && (focus == from || focus == view_.splitter))
        list.setFocus();
}

// A filter says by itself how many rows it leaves.
void ctrlOVSearch::connectFilter() {
    FilterEdit* edit = view_.txtResultFilter;
    ResultList* results = view_.lvSearchResult;
    connect(edit, &FilterEdit::entered, results, &ResultList::prepareFilter);
    connect(edit, &QLineEdit::textChanged, results, &ResultList::filterBy);
    connect(edit, &FilterEdit::left, results, qOverload<>(&QWidget::setFocus));
    auto* suggestions = new FilterSuggestions(*edit, [this, results] {
        return std::make_unique<KnownValues>(results->results().sharedHits(), catalogue_,
                                             dictationTree_);
    });
    connect(catalogueAction_, &QAction::toggled, suggestions, &FilterSuggestions::forget);
    connect(&results->results(), &ResultModel::hitsReplaced, suggestions,
            &FilterSuggestions::forget);
    connect(results, &ResultList::filterRequested, this, &ctrlOVSearch::enterFilter);
    connect(results, &ResultList::filterFound, this, [this, results] {
        post("FilterRows", [this, results] {
            results->showFound();
            view_.txtResultFilter->tell(results->filterReading());
            const QString before = view_.lblSearchResult->text();
            showOutcome(view_, outcome_);
            if (view_.lblSearchResult->text() != before)
                widgets::announce(*view_.lblSearchResult);
            showHint();
        });
    });
}

void ctrlOVSearch::enterFilter() {
    view_.txtResultFilter->setFocus(Qt::ShortcutFocusReason);
    view_.txtResultFilter->selectAll();
}

// What is at work, else the filter.
void ctrlOVSearch::escape() {
    if (rulesOf(state_).stops)
        stopSearch();
    else if (!view_.txtResultFilter->text().isEmpty())
        view_.txtResultFilter->clear();
    else if (view_.txtResultFilter->hasFocus())
        view_.lvSearchResult->setFocus();
}

// The menu of the button.
void ctrlOVSearch::exportResults(bool isAgain) {
    if (view_.lvSearchResult->isEmpty()) {
        modUtil::ShowMessage(text_id::nothingToPrint, platform::MessageIcon::information, {}, this);
        return;
    }
    auto* menu = new QMenu(this);
    menu->setObjectName(QStringLiteral("ExportMenu"));
    menu->setAttribute(Qt::WA_DeleteOnClose);
    exporting::print::addCommands(*menu, !view_.lvSearchResult->selected().hits().empty(),
                                  [this](exporting::print::Command what, bool selectedOnly) {
                                      post("ExportRows",
                                           [=, this] { exportRows(what, selectedOnly); });
                                  });
    // The menu comes again, to choose what all this is for.
    QAction* tick =
        exporting::print::addAllColumns(*menu, exportSettings_.allColumns(), [this](bool all) {
            exportSettings_.setAllColumns(all);
            post("ExportMenu", [this] { exportResults(true); });
        });
    const QPushButton* button = view_.cmdSearchOptions[ControlView::print];
    menu->popup(button->mapToGlobal(button->rect().bottomLeft()));
    if (isAgain)
        menu->setActiveAction(tick); // where the keyboard was
}

void ctrlOVSearch::exportRows(exporting::print::Command what, bool selectedOnly) {
    const ResultList& list = *view_.lvSearchResult;
    if (list.isEmpty()) {
        modUtil::ShowMessage(text_id::nothingToPrint, platform::MessageIcon::information, {}, this);
        return;
    }
    exporting::Document document = exporting::describe(searched_, list.shownFilter());
    for (const std::int32_t field : list.shownFields())
        document.columns.push_back(exporting::columnOf(field));
    if (document.columns.empty()) {
        modUtil::ShowMessage(text_id::noColumnToPrint, platform::MessageIcon::information, {},
                             this);
        return;
    }
    const std::vector<std::int32_t> all = list.shownHits();
    const std::vector<std::int32_t> selected = list.selected().hits();
    const ShownRows allRows(list.results(), all);
    const ShownRows selectedRows(list.results(), selected);
    if (selectedOnly && selected.empty()) { // a filter has taken them away meanwhile
        modUtil::ShowMessage(text_id::nothingSelected, platform::MessageIcon::information, {},
                             this);
        return;
    }
    enter(ControlState::exporting);
    exporting::print::ListExport({std::move(document), allRows, selectedRows, exportSettings_, this,
                                  [this] { return isEnding(); }})
        .run(what, selectedOnly);
}

void ctrlOVSearch::showLog() {
    const std::string path = presentPath();
    if (isEnding())
        return;
    if (path.empty() || !patient::fileExists(path)) {
        platform::userInterface().beep();
        if (!isEnding() && view_.lvSearchResult->selected().path().empty())
            view_.tellReason(ControlView::log);
    } else
        modOVPlugIn::LogView(path);
}

void ctrlOVSearch::copyRows(const std::function<void(const std::function<bool()>&)>& copy) {
    if (view_.lvSearchResult->selected().count() > ResultList::mostCopiedRows) {
        modUtil::ShowMessage(
            {text_id::tooManyRows, {widgets::groupedNumber(ResultList::mostCopiedRows)}},
            platform::MessageIcon::information, {}, this);
        return;
    }
    const WaitCursor waiting;
    enter(ControlState::copying);
    copy([stop = stop_.get_token()] { return !stop.stop_requested(); });
}

} // namespace ov
