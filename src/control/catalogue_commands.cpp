// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// What the control does with a catalogue beside searching in it.

#include "control/catalogue/criterion_counts.h"
#include "control/catalogue/moved_dictation.h"
#include "control/ctrlOVSearch.h"
#include "platform/files.h"
#include "support/language/catalogue_text_ids.h"
#include "support/language/modLanguage.h"
#include "support/modFilePath.h"
#include "support/modUtil.h"
#include "support/patient_files.h"
#include "widgets/captions.h"
#include "widgets/spoken.h"
#include "widgets/text.h"

#include <utility>

namespace ov {

using modDictation::Dictation;
using modDictation::DictationList;

// The control offers it to the host's menus, the list of hits in its own.
void ctrlOVSearch::setUpCatalogue() {
    useCatalogue(settings_.searchesCatalogue());
    catalogueAction_->setObjectName(QStringLiteral("actionSearchCatalogue"));
    widgets::setCaption(*catalogueAction_, text_id::menuSearchCatalogue);
    catalogueAction_->setCheckable(true);
    catalogueAction_->setChecked(!catalogue_.empty());
    connect(catalogueAction_, &QAction::toggled, this, [this](bool searches) {
        settings_.setSearchesCatalogue(searches);
        useCatalogue(searches);
    });
    addAction(catalogueAction_);
    view_.lvSearchResult->addAction(catalogueAction_);
}

void ctrlOVSearch::useCatalogue(bool uses) {
    catalogue_ = uses ? cataloguePlace(settings_.catalogue()) : std::string();
}

// The hits are shown by then.
void ctrlOVSearch::countCriteria() {
    counting_.giveUp();
    if (!outcome_ || outcome_->isCounted || outcome_->report.stopped)
        return;
    const auto work = [this, place = catalogue_, what = searched_, locale = platform::locale(),
                       drives = platform::driveFolder()](
                          const std::stop_token& stop) mutable -> AsideWork::Delivery {
        platform::setDriveFolder(std::move(drives));
        platform::setLocale(std::move(locale));
        auto counts = ov::countCriteria(place, what, stop);
        if (!counts)
            return {};
        return [this, counts = *std::move(counts)] { takeCounts(counts); };
    };
    counting_.start(work, [] {});
}

void ctrlOVSearch::takeCounts(const CriterionCounts& counts) {
    outcome_->report.filesTested = counts.tested;
    outcome_->report.matched = counts.matched;
    outcome_->isCounted = true;
    showCounts();
    showHint();
}

// The path of the selected dictation; where a catalogue told of it, and it is not there any more,
// the one that it has now. Empty when there is none.
std::string ctrlOVSearch::presentPath() {
    const std::string path = view_.lvSearchResult->selected().path();
    if (path.empty() || !outcome_ || !outcome_->asked)
        return path;
    const auto kind = patient::fileKind(path); // nothing: its server is silent, it may be there
    return kind == platform::FileKind::missing ? findMoved(path) : path;
}

void ctrlOVSearch::playMoved(const std::string& path) {
    const ResultList& list = *view_.lvSearchResult;
    if (!outcome_ || !outcome_->asked || list.selected().path() != path)
        return;
    const std::string found = findMoved(path);
    if (!isEnding() && !found.empty() && list.selected().path() == found)
        view_.picPlayer->PlayerPlay();
}

std::string ctrlOVSearch::findMoved(const std::string& path) {
    // Where nothing is there it has not moved.
    if (!checkDictationTree(searched_.root, *this, [this] { return isEnding(); }))
        return {};
    MovedDictation moved(view_.lvSearchResult->results(), path);
    std::string found = movedInCatalogue(moved);
    if (found.empty() && !isEnding() && !stop_.stop_requested())
        found = movedOnDisk(moved);
    if (found.empty() || isEnding())
        return {};
    view_.lvSearchResult->noteMoved(moved.hit(), found);
    view_.setNotice(widgets::text(text_id::dictationMoved,
                                  {platform::toNativePath(modFilePath::directoryPart(found))}));
    widgets::announce(*view_.lblSearchNotice);
    return found;
}

// It may have been updated since.
std::string ctrlOVSearch::movedInCatalogue(MovedDictation& moved) {
    if (catalogue_.empty())
        return {};
    enter(ControlState::searching);
    modOVPlugIn::ProgressInit(0, 1, 0, modLanguage::GetText(text_id::lookingForDictation));
    const CatalogueAnswer answer =
        askPumping(catalogue_, moved.searchIn(searched_.root),
                   {stop_.get_token(), [this] { return isEnding(); }, {}});
    if (isEnding())
        return {};
    modOVPlugIn::ProgressClear();
    moved.noteAnswer(*answer.hits);
    for (std::int32_t i = 1; i <= answer.hits->size(); ++i)
        if (const Dictation one = (*answer.hits)[i];
            moved.isAt(one) && patient::fileExists(pathOf(one)))
            return pathOf(one);
    return {};
}

std::string ctrlOVSearch::movedOnDisk(const MovedDictation& moved) {
    enter(ControlState::asking);
    if (!modUtil::AskYesNo({text_id::lookForDictation, {platform::toNativePath(moved.path())}}, {},
                           this) ||
        isEnding())
        return {};
    enter(ControlState::searching);
    const modDictation::Search what = moved.searchIn(searched_.root);
    DictationList hits;
    std::string found;
    std::int32_t seen = 0;
    std::stop_source enough;
    const std::stop_callback stopped(stop_.get_token(),
                                     [enough]() mutable { enough.request_stop(); });
    const auto look = [&](const modDictation::SearchReport&) {
        while (!isEnding() && found.empty() && seen < hits.size())
            if (const Dictation one = hits[++seen]; moved.isAt(one))
                found = pathOf(one);
        if (!found.empty())
            enough.request_stop();
    };
    const modDictation::SearchReport report = modDictation::search(
        what, hits, {.stop = enough.get_token(), .watch = look, .remembered = remembered_});
    look(report);
    if (isEnding() || !found.empty())
        return found;
    enter(ControlState::asking);
    if (!report.stopped)
        modUtil::ShowMessage({text_id::dictationGone, {platform::toNativePath(what.root)}},
                             platform::MessageIcon::information, {}, this);
    return {};
}

} // namespace ov
