// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "control/search_run.h"

#include "platform/files.h"
#include "platform/threads/coarse_clock.h"
#include "platform/threads/errand.h"
#include "platform/user_interface.h"
#include "plugin/modOVPlugIn.h"
#include "support/language/catalogue_text_ids.h"
#include "support/language/filter_text_ids.h"
#include "support/language/modLanguage.h"
#include "support/language/text_ids.h"
#include "support/modUtil.h"
#include "widgets/spoken.h"
#include "widgets/text.h"

#include <QPointer>
#include <QScopedValueRollback>
#include <QTimer>
#include <memory>

namespace ov {

using modLanguage::GetText;
using widgets::groupedNumber;

namespace {

// Fewer rows are filled before a progress display could be seen.
constexpr std::int32_t mostHitsWithoutProgress = 25;

// Counts the hits above the list while the walk goes on. A timer, since the walk has no time for
// it.
class LiveCount {
public:
    LiveCount(const modDictation::DictationList& hits, QLabel& label) : label_(&label) {
        constexpr int interval = 100;
        QObject::connect(&timer_, &QTimer::timeout, &label, [&hits, &label] {
            label.setText(widgets::text(text_id::foundSoFar, {groupedNumber(hits.size())}));
        });
        timer_.start(interval);
    }
    ~LiveCount() {
        if (label_)
            label_->setText(widgets::text(text_id::resultLabel, {""}));
    }
    LiveCount(const LiveCount&) = delete;
    LiveCount& operator=(const LiveCount&) = delete;

private:
    QPointer<QLabel> label_; // the host may destroy the window in the middle of a search
    QTimer timer_;
};

// " (12 dictations)", of which a filter may show fewer.
std::string countText(std::int32_t hitCount, const ResultList& list) {
    const std::string rows = groupedNumber(list.results().rowCount());
    if (list.isFiltered())
        return " " + (hitCount == 1
                          ? GetText(text_id::filteredCountOfOne, {rows})
                          : GetText(text_id::filteredCount, {rows, groupedNumber(hitCount)}));
    return " (" + groupedNumber(hitCount) + " " +
           GetText(hitCount == 1 ? text_id::dictation : text_id::dictations) + ")";
}

// That not all of the filter counts.
std::string filterText(const modDictation::FilterReading& reading) {
    if (reading.isTooLong)
        return GetText(text_id::filterTooLong);
    return reading.leftOut.empty() ? std::string() : GetText(text_id::filterUnfinished);
}

QString noticeOf(const SearchOutcome& outcome) {
    QStringList sentences;
    if (outcome.asked && outcome.asked->asOf == 0)
        sentences << widgets::text(text_id::catalogueIncomplete);
    else if (outcome.asked && outcome.asked->begun != 0)
        sentences << widgets::text(text_id::catalogueUpdateBegun,
                                   {momentText(outcome.asked->begun, platform::now())});
    if (const QString notice = noticeText(outcome.report); !notice.isEmpty())
        sentences << notice;
    return sentences.join(QLatin1Char(' '));
}

// Searches share their thread and the host's progress display, also while rows are filled: only one
// is on the stack at a time, whichever control's it is.
bool& searchOnThread() {
    thread_local bool running = false;
    return running;
}

} // namespace

QString noticeText(const modDictation::SearchReport& report) {
    QStringList sentences;
    if (report.stopped)
        sentences << widgets::text(text_id::searchStopped);
    if (report.limitReached)
        sentences << widgets::text(text_id::hitLimitReached,
                                   {groupedNumber(modDictation::usualLimit)});
    if (report.rootVanished)
        sentences << widgets::text(text_id::storeVanished);
    else if (report.foldersUnreadable > 0)
        sentences << widgets::text(text_id::directoriesSkipped,
                                   {groupedNumber(report.foldersUnreadable)});
    if (report.namesSkipped > 0)
        sentences << widgets::text(text_id::namesSkipped, {groupedNumber(report.namesSkipped)});
    if (!report.localeProblem.ok())
        sentences << widgets::text(text_id::withoutLocale, {report.localeProblem.description()});
    return sentences.join(QLatin1Char(' '));
}

namespace {

bool storeAnswers(const std::string& root, const std::function<bool()>& isEnding) {
    const auto exists = platform::patientlyPumping(
        root, [root] { return platform::directoryExists(root); }, [&] { return !isEnding(); });
    return exists.value_or(false);
}

} // namespace

bool checkDictationTree(const std::string& root, QWidget& owner,
                        const std::function<bool()>& isEnding) {
    if (root.empty()) {
        modUtil::ShowMessage(text_id::noStoreChosen, platform::MessageIcon::information, {},
                             &owner);
        return false;
    }
    const bool answers = storeAnswers(root, isEnding);
    if (isEnding() || answers)
        return !isEnding();
    modUtil::ShowMessage({text_id::directoryMissing, {platform::toNativePath(root)}},
                         platform::MessageIcon::information, {}, &owner);
    return false;
}

// A catalogue also answers while the store does not.
bool SearchRun::mayBegin(const std::string& root) {
    return (!caller_.catalogue.empty() && !root.empty()) ||
           checkDictationTree(root, caller_.owner, caller_.isEnding);
}

std::optional<SearchOutcome> SearchRun::run(const std::string& root) {
    if (!mayBegin(root))
        return std::nullopt;
    if (searchOnThread()) {
        modUtil::ShowMessage(text_id::anotherSearchRuns, platform::MessageIcon::information, {},
                             &caller_.owner);
        return std::nullopt;
    }
    const modDictation::Search what{root, criteria(), caller_.view.isCompareAnd()};
    if (what.criteria.empty() || caller_.isEnding())
        return std::nullopt;
    caller_.starting(what);
    showOutcome(caller_.view, std::nullopt);
    caller_.view.lvSearchResult->removeAllRows();
    caller_.view.lvSearchResult->viewport()->repaint();
    return search(what);
}

std::optional<SearchOutcome> SearchRun::search(const modDictation::Search& what) {
    const QScopedValueRollback onlyOne(searchOnThread(), true);
    Hits hits;
    auto outcome = find(what, hits);
    if (!outcome || caller_.isEnding())
        return std::nullopt;
    outcome->hitCount = hits->size();
    if (outcome->hitCount > 0) {
        caller_.view.lvSearchResult->setHits(std::move(hits));
        fill(outcome->hitCount);
    }
    if (caller_.isEnding())
        return std::nullopt;
    return outcome;
}

std::optional<SearchOutcome> SearchRun::follow(const std::string& root) {
    if (searchOnThread())
        return std::nullopt;
    const QScopedValueRollback onlyOne(searchOnThread(), true);
    caller_.enter(ControlState::following);
    if (!reaches(root))
        return std::nullopt;
    const modDictation::Search what{root, criteria(), caller_.view.isCompareAnd()};
    Hits hits;
    auto outcome = findAgain(what, hits);
    if (!outcome || caller_.isEnding() || outcome->report.stopped)
        return std::nullopt;
    outcome->hitCount = hits->size();
    caller_.view.lvSearchResult->replaceHits(std::move(hits)); // lets messages be handled
    if (caller_.isEnding())
        return std::nullopt;
    caller_.starting(what);
    return outcome;
}

// Says below the hits when not.
bool SearchRun::reaches(const std::string& root) {
    if (!caller_.catalogue.empty())
        return true;
    const bool answers = storeAnswers(root, caller_.isEnding);
    if (caller_.isEnding() || caller_.stop.stop_requested())
        return false;
    if (!answers)
        caller_.view.setNotice(
            widgets::text(text_id::storeDoesNotAnswer, {platform::toNativePath(root)}));
    return answers;
}

// A single empty criterion, which every dictation satisfies, when the user wants all of them.
std::vector<modDictation::Criterion> SearchRun::criteria() {
    std::vector<modDictation::Criterion> all = caller_.view.lvSearchCriteria->criteria();
    if (all.empty() && (caller_.withoutCriteria == Questions::listsAll ||
                        modUtil::AskYesNo(text_id::searchWithoutCriteria, {}, &caller_.owner)))
        all.emplace_back();
    return all;
}

modDictation::SearchReport SearchRun::walk(const modDictation::Search& what,
                                           modDictation::DictationList& hits) {
    const LiveCount liveCount(hits, *caller_.view.lblSearchResult);
    caller_.enter(ControlState::searching);
    return modDictation::search(what, hits,
                                {.stop = caller_.stop, .remembered = caller_.remembered});
}

// The host hears of every row; the list shows them in the steps in which a person can see them
// come.
void SearchRun::fill(std::int32_t count) {
    caller_.enter(ControlState::filling);
    if (count > mostHitsWithoutProgress)
        modOVPlugIn::ProgressInit(0, count, 0, GetText(text_id::fillingList));
    constexpr std::int64_t intervalMs = 50;
    std::int64_t nextShow = 0;
    std::int32_t i = 1;
    try {
        for (; i <= count && !caller_.isEnding(); ++i) {
            if (i == count || platform::coarseMilliseconds() >= nextShow) {
                showFirst(i);
                nextShow = platform::coarseMilliseconds() + intervalMs;
            }
            if (caller_.isEnding())
                return;
            modOVPlugIn::ProgressValue(i);
            platform::processMessagesNowAndThen();
        }
    } catch (...) {
        caller_.view.lvSearchResult->showFirst(i); // the host was to hear of this one
        throw;
    }
    if (caller_.isEnding())
        return;
    caller_.view.lvSearchResult->showSorted();
    modOVPlugIn::ProgressClear();
}

// The rows are painted at once, right after all else has been handled: so that is all that the
// window stands still for.
void SearchRun::showFirst(std::int32_t count) {
    platform::userInterface().processMessages();
    if (caller_.isEnding())
        return;
    caller_.view.lvSearchResult->showFirst(count);
    platform::userInterface().processMessages();
}

void SearchRun::tellOutcome(const SearchOutcome& outcome) {
    caller_.enter(ControlState::asking);
    caller_.view.lvSearchResult->viewport()->update();
    showOutcome(caller_.view, outcome);
    widgets::announce(*caller_.view.lblSearchResult);
    widgets::announce(*caller_.view.lblCatalogueMoment);
    widgets::announce(*caller_.view.lblSearchNotice);
    // Who stopped the search knows why nothing was found.
    if (outcome.hitCount == 0 && !outcome.report.stopped && !outcome.report.rootVanished)
        modUtil::ShowMessage(text_id::nothingFound, platform::MessageIcon::information, {},
                             &caller_.owner);
}

void showOutcome(const ControlView& view, const std::optional<SearchOutcome>& outcome) {
    const ResultList& list = *view.lvSearchResult;
    const std::string count =
        outcome ? countText(outcome->hitCount, list) + filterText(list.filterReading()) : "";
    view.lblSearchResult->setText(widgets::text(text_id::resultLabel, {count}));
    view.setNotice(outcome ? noticeOf(*outcome) : QString());
    view.setMoment(outcome && outcome->asked ? outcome->asked->asOf : 0);
}

} // namespace ov
