// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// How a search asks a catalogue, and what it does without an answer.

#include "control/search_run.h"
#include "plugin/modOVPlugIn.h"
#include "support/language/catalogue_text_ids.h"
#include "support/language/modLanguage.h"
#include "support/language/text_ids.h"
#include "widgets/text.h"

#include <utility>

namespace ov {

using Kind = CatalogueAnswer::Kind;

namespace {

SearchOutcome outcomeOf(CatalogueAnswer answer) {
    return {0, std::move(answer.report), answer.store, false};
}

} // namespace

CatalogueAnswer SearchRun::ask(const modDictation::Search& what,
                               const std::function<void(std::int32_t)>& watch) {
    modOVPlugIn::ProgressInit(0, 1, 0, modLanguage::GetText(text_id::askingCatalogue));
    CatalogueAnswer answer =
        askPumping(caller_.catalogue, what, {caller_.stop, caller_.isEnding, watch});
    if (!caller_.isEnding())
        modOVPlugIn::ProgressClear();
    return answer;
}

// By the catalogue, or by a walk when that is meant, or when the user wants one instead.
std::optional<SearchOutcome> SearchRun::find(const modDictation::Search& what, Hits& hits) {
    if (!caller_.catalogue.empty()) {
        QLabel* label = caller_.view.lblSearchResult;
        caller_.enter(ControlState::searching);
        CatalogueAnswer answer = ask(what, [label](std::int32_t found) {
            label->setText(widgets::text(text_id::foundSoFar, {widgets::groupedNumber(found)}));
        });
        if (caller_.isEnding())
            return std::nullopt;
        label->setText(widgets::text(text_id::resultLabel, {""}));
        hits = std::move(answer.hits);
        if (answer.kind == Kind::answered)
            return outcomeOf(std::move(answer));
        caller_.enter(ControlState::asking);
        if (!modUtil::AskYesNo(answer.question(), {}, &caller_.owner) || caller_.isEnding() ||
            !checkDictationTree(what.root, caller_.owner, caller_.isEnding))
            return std::nullopt;
    }
    hits = std::make_unique<modDictation::DictationList>();
    return SearchOutcome{0, walk(what, *hits), std::nullopt};
}

// Who changes criteria is asked nothing.
std::optional<SearchOutcome> SearchRun::findAgain(const modDictation::Search& what, Hits& hits) {
    if (caller_.catalogue.empty()) {
        hits = std::make_unique<modDictation::DictationList>();
        return SearchOutcome{
            0,
            modDictation::search(what, *hits,
                                 {.stop = caller_.stop, .remembered = caller_.remembered}),
            std::nullopt};
    }
    CatalogueAnswer answer = ask(what, {});
    if (caller_.isEnding())
        return std::nullopt;
    hits = std::move(answer.hits);
    if (answer.kind == Kind::answered)
        return outcomeOf(std::move(answer));
    caller_.view.setNotice(widgets::toQt(answer.problem().text()));
    return std::nullopt;
}

} // namespace ov
