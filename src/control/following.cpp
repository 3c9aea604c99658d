// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// How the list of hits follows the criteria, once a search has listed the store.

#include "control/ctrlOVSearch.h"
#include "control/results/search_hint.h"

#include <utility>

namespace ov {

// The last search was for what the criteria are now, in this store.
bool ctrlOVSearch::showsWhatIsAsked() const {
    std::vector<modDictation::Criterion> asked = view_.lvSearchCriteria->criteria();
    if (asked.empty())
        asked.emplace_back();
    return asked == searched_.criteria && view_.isCompareAnd() == searched_.all &&
           dictationTree_ == searched_.root;
}

void ctrlOVSearch::showCounts() {
    std::vector<CriterionCount> counts;
    if (outcome_ && !outcome_->report.stopped && showsWhatIsAsked()) {
        const std::vector<bool> emptying = emptyingCriteria(*outcome_, searched_);
        for (std::size_t i = 0; i < outcome_->report.matched.size(); ++i)
            counts.push_back({outcome_->report.matched[i], outcome_->report.filesTested,
                              i < emptying.size() && emptying[i]});
    }
    view_.lvSearchCriteria->setCounts(counts);
}

void ctrlOVSearch::criteriaChanged() {
    criteriaChanged_ = true;
    criteriaUnsaved_ = true;
    showCounts();
    showHint();
    if (state_ == ControlState::following)
        stop_.request_stop();
    followLater();
}

void ctrlOVSearch::followChosen(bool follows) {
    settings_.setFollowsCriteria(follows);
    if (follows && !showsWhatIsAsked())
        criteriaChanged();
}

// Not before what the user has asked for meanwhile.
void ctrlOVSearch::followLater() {
    if (criteriaChanged_ && !isEnding() && !commands_.hasNext())
        commands_.postNext("FollowChanges", [this] { followChanges(); });
}

void ctrlOVSearch::followChanges() {
    saveCriteria();                            // a search may take its time
    if (isEnding() || commands_.isWaitedFor()) // what the user has asked for comes first
        return;
    if (!std::exchange(criteriaChanged_, false)) // two changes, one search
        return;
    // In the same way as the search before.
    const std::string catalogue = outcome_ && outcome_->asked ? catalogue_ : std::string();
    const bool isListed = outcome_ && searched_.root == dictationTree_ &&
                          (!catalogue.empty() || remembered_->bytes() > 0);
    if (!isListed || !view_.chkFollow->isChecked())
        return;
    counting_.giveUp();
    SearchRun run({view_, *this, stop_.get_token(), SearchRun::Questions::listsAll, remembered_,
                   catalogue, [this](ControlState state) { enter(state); },
                   [this] { return isEnding(); },
                   [this](const modDictation::Search& what) { searched_ = what; }});
    const auto outcome = runFollowing(run);
    if (!outcome || isEnding())
        return;
    outcome_ = outcome;
    showOutcome(view_, outcome_);
    showCounts();
    countCriteria();
}

// A host that fails is no reason to interrupt whoever enters criteria.
std::optional<SearchOutcome> ctrlOVSearch::runFollowing(SearchRun& run) {
    const std::string root = dictationTree_; // the host may name another one meanwhile
    try {
        return run.follow(root);
    } catch (const HostError& error) {
        WriteErrorLog(Error(error.number(), error.description()), "FollowChanges");
        trapped("FollowChanges", [] {
            modOVPlugIn::ProgressClear();
            return 0;
        });
        return std::nullopt;
    }
}

} // namespace ov
