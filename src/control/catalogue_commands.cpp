// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// What the control does with a catalogue beside searching in it.

#include "control/catalogue/criterion_counts.h"
#include "control/ctrlOVSearch.h"
#include "dictation/dictation_record.h"
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
    const std::int32_t hit = view_.lvSearchResult->results().hitOfPath(path);
    modDictation::Search what{searched_.root, {}, true};
    std::string buffer;
    const std::string_view name =
        modDictation::dictationName(view_.lvSearchResult->results().hits()[hit].name, buffer);
    what.criteria.push_back({modDictation::field_id::name,
                             modDictation::operator_id::is,
                             std::string(name),
                             {},
                             false});
    std::string found = movedInCatalogue(what, path);
    if (found.empty() && !isEnding() && !stop_.stop_requested())
        found = movedOnDisk(what, path);
    if (found.empty() || isEnding())
        return {};
    view_.lvSearchResult->noteMoved(hit, found);
    view_.setNotice(widgets::text(text_id::dictationMoved,
                                  {platform::toNativePath(modFilePath::directoryPart(found))}));
    widgets::announce(*view_.lblSearchNotice);
    return found;
}

// It may have been updated since.
std::string ctrlOVSearch::movedInCatalogue(const modDictation::Search& what,
                                           const std::string& path) {
    if (catalogue_.empty())
        return {};
    enter(ControlState::searching);
    modOVPlugIn::ProgressInit(0, 1, 0, modLanguage::GetText(text_id::lookingForDictation));
    const CatalogueAnswer answer =
        askPumping(catalogue_, what, {stop_.get_token(), [this] { return isEnding(); }, {}});
    if (isEnding())
        return {};
    modOVPlugIn::ProgressClear();
    for (std::int32_t i = 1; i <= answer.hits->size(); ++i)
        if (const std::string other = pathOf((*answer.hits)[i]);
            other != path && patient::fileExists(other))
            return other;
    return {};
}

std::string ctrlOVSearch::movedOnDisk(modDictation::Search what, const std::string& path) {
    enter(ControlState::asking);
    if (!modUtil::AskYesNo({text_id::lookForDictation, {platform::toNativePath(path)}}, {}, this) ||
        isEnding())
        return {};
    enter(ControlState::searching);
    what.limit = 1;
    DictationList hits;
    const modDictation::SearchReport report =
        modDictation::search(what, hits, {.stop = stop_.get_token(), .remembered = remembered_});
    if (isEnding() || !hits.empty())
        return isEnding() ? std::string() : pathOf(hits[1]);
    enter(ControlState::asking);
    if (!report.stopped)
        modUtil::ShowMessage({text_id::dictationGone, {platform::toNativePath(what.root)}},
                             platform::MessageIcon::information, {}, this);
    return {};
}

} // namespace ov
