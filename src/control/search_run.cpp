// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "control/search_run.h"

#include "platform/files.h"
#include "platform/user_interface.h"
#include "plugin/modOVPlugIn.h"
#include "support/language/modLanguage.h"
#include "support/language/text_ids.h"
#include "support/modUtil.h"
#include "widgets/text.h"

#include <QPointer>
#include <QScopedValueRollback>
#include <QTimer>
#include <algorithm>
#include <iterator>
#include <memory>

namespace ov {

using modLanguage::GetText;

namespace {

// Fewer rows are filled before a progress display could be seen.
constexpr std::int32_t mostHitsWithoutProgress = 25;

std::string groupedNumber(std::int64_t number) {
    return widgets::toUtf8(widgets::languageLocale().toString(static_cast<qlonglong>(number)));
}

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

// " (12 dictations)".
std::string countText(std::int32_t hitCount) {
    return " (" + std::to_string(hitCount) + " " +
           GetText(hitCount == 1 ? text_id::dictation : text_id::dictations) + ")";
}

// Searches share the state of their thread: only one is on the stack at a time, whichever
// control's it is.
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
    return sentences.join(QLatin1Char(' '));
}

bool checkDictationTree(const std::string& root, QWidget& owner) {
    if (platform::directoryExists(root))
        return true;
    modUtil::ShowMessage({text_id::directoryMissing, {platform::toNativePath(root)}},
                         platform::MessageIcon::information, {}, &owner);
    return false;
}

std::optional<SearchOutcome> SearchRun::run(const std::string& root) {
    if (!checkDictationTree(root, owner_))
        return std::nullopt;
    if (searchOnThread()) {
        modUtil::ShowMessage(text_id::anotherSearchRuns, platform::MessageIcon::information, {},
                             &owner_);
        return std::nullopt;
    }
    const modDictation::Search what{root, criteria(), view_.isCompareAnd()};
    if (what.criteria.empty() || isEnding_())
        return std::nullopt;
    starting_(what);
    showOutcome(view_, std::nullopt);
    view_.lvSearchResult->removeAllRows();
    view_.lvSearchResult->viewport()->repaint();
    return search(what);
}

std::optional<SearchOutcome> SearchRun::search(const modDictation::Search& what) {
    const QScopedValueRollback onlyOne(searchOnThread(), true);
    auto hits = std::make_unique<modDictation::DictationList>();
    SearchOutcome outcome{0, walk(what, *hits)};
    if (isEnding_())
        return std::nullopt;
    outcome.hitCount = hits->size();
    if (outcome.hitCount > 0) {
        view_.lvSearchResult->setHits(std::move(hits));
        fill(outcome.hitCount);
    }
    if (isEnding_())
        return std::nullopt;
    return outcome;
}

// A single empty criterion, which every dictation satisfies, when the user wants all of them.
std::vector<modDictation::Criterion> SearchRun::criteria() {
    std::vector<modDictation::Criterion> all;
    std::ranges::transform(view_.lvSearchCriteria->criteria(), std::back_inserter(all),
                           modDictation::ParseCriteriaString);
    if (all.empty() && modUtil::AskYesNo(text_id::searchWithoutCriteria, {}, &owner_))
        all.emplace_back();
    return all;
}

modDictation::SearchReport SearchRun::walk(const modDictation::Search& what,
                                           modDictation::DictationList& hits) {
    const LiveCount liveCount(hits, *view_.lblSearchResult);
    view_.show(ControlView::Activity::searching);
    modDictation::SearchReport report;
    {
        const QScopedValueRollback walking(stage_, Stage::walking);
        report = modDictation::search(what, hits, stop_.get_token());
    }
    if (!isEnding_()) // what is left is over before one could stop it
        view_.show(ControlView::Activity::busy);
    return report;
}

void SearchRun::stop() {
    if (stage_ == Stage::walking)
        stop_.request_stop();
}

// The host hears of every row; the list shows them in the steps in which a person can see them
// come.
void SearchRun::fill(std::int32_t count) {
    const QScopedValueRollback filling(stage_, Stage::filling);
    if (count > mostHitsWithoutProgress)
        modOVPlugIn::ProgressInit(0, count, 0, GetText(text_id::fillingList));
    constexpr std::int32_t step = 4096;
    std::int32_t i = 1;
    try {
        for (; i <= count && !isEnding_(); ++i) {
            if (i % step == 0 || i == count)
                view_.lvSearchResult->showFirst(i);
            modOVPlugIn::ProgressValue(i);
            platform::processMessagesNowAndThen();
        }
    } catch (...) {
        view_.lvSearchResult->showFirst(i); // the host was to hear of this one
        throw;
    }
    if (isEnding_())
        return;
    view_.lvSearchResult->showSorted();
    modOVPlugIn::ProgressClear();
}

void SearchRun::tellOutcome(const SearchOutcome& outcome) {
    view_.lvSearchResult->viewport()->update();
    showOutcome(view_, outcome);
    // Who stopped the search knows why nothing was found.
    if (outcome.hitCount == 0 && !outcome.report.stopped && !outcome.report.rootVanished)
        modUtil::ShowMessage(text_id::nothingFound, platform::MessageIcon::information, {},
                             &owner_);
}

void showOutcome(const ControlView& view, const std::optional<SearchOutcome>& outcome) {
    view.lblSearchResult->setText(
        widgets::text(text_id::resultLabel, {outcome ? countText(outcome->hitCount) : ""}));
    view.setNotice(outcome ? noticeText(outcome->report) : QString());
}

} // namespace ov
