// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// What the buttons, keys and menus of the control do.

#include "control/catalogue/known_values.h"
#include "control/criteria/pasted_criteria.h"
#include "control/ctrlOVSearch.h"
#include "control/results/search_hint.h"
#include "dialogs/frmCriteria.h"
#include "dictation/typed/search_text.h"
#include "support/language/text_ids.h"
#include "support/modUtil.h"
#include "widgets/text.h"

#include <QClipboard>
#include <QGuiApplication>
#include <utility>

namespace ov {

void ctrlOVSearch::enter(ControlState state) {
    if (isEnding())
        return;
    state_ = state;
    view_.show(state);
    showHint();
}

// A search that follows the criteria gives way to what the user asks for, and comes again after it.
void ctrlOVSearch::post(const char* procedure, std::function<void()> run) {
    const auto command = [this, run = std::move(run)] {
        enter(ControlState::working);
        run();
    };
    if (state_ != ControlState::following) {
        commands_.post(procedure, command);
        return;
    }
    criteriaChanged_ = true;
    stop_.request_stop();
    commands_.postNext(procedure, command);
}

void ctrlOVSearch::perform(const char* procedure, const std::function<void()>& run) {
    if (!rulesOf(state_).takesCommands)
        return;
    const Frame frame(*this);
    stop_ = {};
    searchedFrom_ = nullptr; // a search by key says so again
    try {
        run();
        if (!isEnding())
            saveCriteria();
    } catch (const HostError& error) {
        report(Error(error.number(), error.description()), procedure);
    } catch (const std::exception& error) {
        report(Error(0, error.what()), procedure);
    } catch (...) {
        report(Error(0, "unknown"), procedure);
    }
    enter(ControlState::idle);
    followLater();
}

void ctrlOVSearch::report(const Error& error, const char* procedure) {
    WriteErrorLog(error, procedure);
    if (isEnding())
        return;
    enter(ControlState::asking);
    modUtil::ShowMessage(error.description, platform::MessageIcon::exclamation, {}, this);
}

bool ctrlOVSearch::storeAnswers() {
    const std::string root = dictationTree_; // the host may name another one meanwhile
    return checkDictationTree(root, *this, [this] { return isEnding(); });
}

bool ctrlOVSearch::listAnswers() {
    return (outcome_ && outcome_->asked) || !catalogue_.empty() || storeAnswers();
}

void ctrlOVSearch::cmdSearchOptions_Click(int index) {
    post("cmdSearchOptions_Click", [this, index] {
        if (index == ControlView::search)
            return runSearch(SearchRun::Questions::asks);
        if (!(index == ControlView::log ? storeAnswers() : listAnswers()))
            return;
        switch (index) {
        case ControlView::print:
            exportResults();
            break;
        case ControlView::columns:
            chooseColumns();
            break;
        case ControlView::log:
            showLog();
            break;
        default:
            break;
        }
    });
}

void ctrlOVSearch::cmdSearchKriteriaOptions_Click(int index) {
    post("cmdSearchKriteriaOptions_Click", [this, index] {
        switch (index) {
        case ControlView::addCriterion:
            addCriterion();
            break;
        case ControlView::editCriterion:
            editCriterion();
            break;
        case ControlView::deleteCriterion:
            deleteCriterion();
            break;
        default:
            break;
        }
    });
}

void ctrlOVSearch::runSearch(SearchRun::Questions withoutCriteria) {
    runSearch(withoutCriteria, catalogue_);
}

void ctrlOVSearch::runSearch(SearchRun::Questions withoutCriteria, const std::string& catalogue) {
    const std::string root = dictationTree_; // the host may name another one meanwhile
    criteriaChanged_ = false;
    counting_.giveUp();
    SearchRun run({view_, *this, stop_.get_token(), withoutCriteria, remembered_, catalogue,
                   [this](ControlState state) { enter(state); }, [this] { return isEnding(); },
                   [this](const modDictation::Search& what) {
                       view_.picPlayer->PlayerStop();
                       outcome_.reset();
                       showCounts();
                       searched_ = what;
                       view_.txtResultFilter->clear();
                   }});
    enter(ControlState::asking);
    try {
        if (const auto outcome = run.run(root)) {
            outcome_ = outcome; // before its box is open, in which the language may change
            showCounts();
            countCriteria();
            noteSearch();
            goToHits();
            run.tellOutcome(*outcome);
        }
    } catch (...) {
        if (rulesOf(state_).tellsHost) // nobody else takes the host's progress away
            trapped("runSearch", [] {
                modOVPlugIn::ProgressClear();
                return 0;
            });
        throw;
    }
}

// Who asks for it in the criteria goes on in the hits.
void ctrlOVSearch::searchByKey() {
    QWidget* focus = window()->focusWidget();
    const QPointer<QWidget> from = view_.isInCriteria(focus) ? focus : nullptr;
    post("SearchByKey", [this, from] {
        searchedFrom_ = from;
        runSearch(SearchRun::Questions::asks);
    });
}

// Where someone doubts that a file server tells of all changes, or a catalogue of the latest.
void ctrlOVSearch::searchAfresh() {
    post("SearchAfresh", [this] {
        remembered_->forget();
        runSearch(SearchRun::Questions::asks, {});
    });
}

void ctrlOVSearch::listAll() {
    view_.lvSearchResult->setFocus(); // the button goes away
    post("ListAll", [this] { runSearch(SearchRun::Questions::listsAll); });
}

// While a search goes on nothing is known yet.
void ctrlOVSearch::showHint() {
    if (rulesOf(state_).tellsHost && !rulesOf(state_).takesCommands) {
        view_.emptyState->say({}, false);
        return;
    }
    if (view_.lvSearchResult->isFiltered()) {
        view_.emptyState->say(widgets::text(text_id::filterHint), false);
        return;
    }
    const bool hasCriteria = !view_.lvSearchCriteria->criteria().empty();
    const auto outcome = showsWhatIsAsked() ? outcome_ : std::nullopt;
    const SearchHint hint = searchHint(dictationTree_, hasCriteria, outcome, searched_);
    view_.emptyState->say(hint.text, hint.offersAll);
}

// No command: what it does is done at once, and only marks what others look at.
void ctrlOVSearch::stopSearch() {
    if (rulesOf(state_).stops)
        stop_.request_stop();
}

// Empty when the editor was left without a new criterion.
std::optional<std::string> ctrlOVSearch::openEditor(const std::string& criteriaString, bool isNew) {
    enter(ControlState::asking);
    KnownValues known(view_.lvSearchResult->results().sharedHits(), catalogue_, dictationTree_);
    frmCriteria editor(this);
    editor.EditMode = !isNew;
    editor.CriteriaString = criteriaString;
    editor.Seen = &known;
    editor.exec();
    if (!editor.OKPressed() || isEnding())
        return std::nullopt;
    return editor.CriteriaString;
}

void ctrlOVSearch::addCriterion() {
    const auto made = openEditor({}, true);
    if (!made)
        return;
    keepCriterion(view_.lvSearchCriteria->addOnce(*made));
}

void ctrlOVSearch::editCriterion() {
    if (!view_.lvSearchCriteria->hasSelected())
        return;
    const auto changed = openEditor(view_.lvSearchCriteria->selected(), false);
    if (!changed)
        return;
    keepCriterion(view_.lvSearchCriteria->replaceSelected(*changed));
}

// Of the selected one, or else the last; the editor makes another of it.
void ctrlOVSearch::duplicateCriterion() {
    CriteriaList& list = *view_.lvSearchCriteria;
    if (list.entries().empty())
        return;
    if (const auto made = openEditor(list.copied(), true))
        keepCriterion(list.addBeside(*made));
}

// What is no criterion stays in the clipboard.
void ctrlOVSearch::pasteCriteria() {
    const QString copied = QGuiApplication::clipboard()->text(); // may let messages be handled
    if (isEnding())
        return;
    const modDictation::CriteriaText read = pastedCriteria(copied);
    if (!read.criteria.empty()) {
        const bool isNew = view_.lvSearchCriteria->insert(entriesOf(read.criteria));
        keepCriterion(isNew || read.skipped > 0); // one box is enough
    }
    if (read.skipped == 0)
        return;
    enter(ControlState::asking);
    modUtil::ShowMessage({text_id::linesNotPasted,
                          {widgets::groupedNumber(static_cast<std::int64_t>(read.skipped))}},
                         platform::MessageIcon::information, {}, this);
}

void ctrlOVSearch::keepCriterion(bool isNew) {
    if (!isNew)
        modUtil::ShowMessage(text_id::duplicateCriterion, platform::MessageIcon::information, {},
                             this);
}

void ctrlOVSearch::deleteCriterion() {
    view_.lvSearchCriteria->removeSelected();
}

// After every change, not only at the end: the host may crash. That it cannot be done is told once.
void ctrlOVSearch::saveCriteria() {
    if (!std::exchange(criteriaUnsaved_, false))
        return;
    const platform::Status saved = criteriaFile_.save(view_.lvSearchCriteria->entries());
    if (saved.ok())
        return;
    WriteErrorLog(saved, "SaveCriteria");
    if (std::exchange(toldUnsaved_, true))
        return;
    enter(ControlState::asking);
    modUtil::ShowMessage({text_id::criteriaNotSaved, {saved.description()}},
                         platform::MessageIcon::exclamation, {}, this);
}

void ctrlOVSearch::compareChanged(bool all) {
    settings_.setSearchCompareAnd(all);
    view_.setCompareAnd(all);
}

} // namespace ov
