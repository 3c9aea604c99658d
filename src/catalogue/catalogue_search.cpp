// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "catalogue/catalogue_search.h"

#include "dictation/dictation_record.h"
#include "dictation/search/matching.h"
#include "platform/files.h"
#include "platform/user_interface.h"

#include <algorithm>
#include <cerrno>
#include <utility>

namespace ov::catalogue {

using modDictation::Dictation;
using modDictation::SearchReport;
using platform::Status;

namespace {

constexpr std::size_t mostToldProblems = 100; // as of a walk

Status leftOutOf(Catalogue& catalogue, const Store& store, const Question& question,
                 SearchReport& report) {
    Catalogue::LeftOut left;
    if (Status read = catalogue.leftOut(store.id, question, left); !read.ok())
        return read;
    if (!left.isRootThere && !report.stopped)
        return {ENOENT, platform::toNativePath(question.root), "is not in the catalogue"};
    report.foldersTooDeep = left.tooDeep;
    report.namesSkipped = left.skipped;
    report.foldersUnreadable = static_cast<std::int64_t>(left.unreadable.size());
    for (const auto& [directory, why] : left.unreadable)
        if (report.problems.size() < mostToldProblems)
            report.problems.emplace_back(EIO, platform::toNativePath(directory), why);
    return {};
}

// What one search is about to take.
class Taking {
public:
    Taking(const modDictation::Search& what, const Question& question,
           const platform::DateTime& now)
        : what_(what), isExact_(question.isExact), criteria_(what.criteria, now) {}

    bool isHit(const Dictation& dictation) {
        return isExact_ ||
               modDictation::MatchDictation(dictation.directory,
                                            modDictation::dictationName(dictation.name, buffer_),
                                            criteria_, what_.all);
    }

private:
    const modDictation::Search& what_;
    const bool isExact_;
    modDictation::PreparedCriteria criteria_;
    std::string buffer_;
};

// Columns in which each number stands for one value as it is counted.
std::optional<std::size_t> groupingColumn(std::int32_t field) {
    const auto column = columnOfField(field);
    if (!column)
        return std::nullopt;
    const Keeping keeping = keptColumns()[*column].keeping;
    return keeping == Keeping::ownText || keeping == Keeping::marker ? std::nullopt : column;
}

// What is asked of the catalogue as it stands at this moment.
struct Asking {
    Asking(Catalogue& catalogue, const Store& store, const modDictation::Search& what,
           const modDictation::SearchMeans& means, SearchReport& report)
        : stoppable(catalogue,
                    [&means, &report] {
                        if (means.watch)
                            means.watch(report);
                        report.stopped = report.stopped || means.stop.stop_requested();
                        return report.stopped;
                    }),
          moment(catalogue),
          question(questionOf(what, now)),
          status(moment.begun()) {
        if (status.ok())
            status = leftOutOf(catalogue, store, question, report);
    }

    const Stoppable stoppable;
    const Moment moment;
    const platform::DateTime now = platform::now();
    const Question question;
    Status status;
};

} // namespace

Status search(Catalogue& catalogue, const Store& store, const modDictation::Search& what,
              modDictation::DictationList& hits, const modDictation::SearchMeans& means,
              SearchReport& report) {
    constexpr std::int64_t betweenWatches = 1024;
    const Asking asking(catalogue, store, what, means, report);
    if (!asking.status.ok() || report.stopped)
        return asking.status;
    const Question& question = asking.question;
    Taking taking(what, question, asking.now);
    const std::int64_t room = std::int64_t{what.limit} - hits.size();
    const auto take = [&](const Dictation& dictation, std::int64_t /*count*/) {
        if (++report.filesTested % betweenWatches == 0 && means.watch)
            means.watch(report);
        report.stopped = means.stop.stop_requested();
        report.limitReached = !report.stopped && report.hits >= room;
        if (report.stopped || report.limitReached)
            return false;
        if (taking.isHit(dictation)) {
            hits.add(dictation.directory, dictation.name);
            ++report.hits;
        }
        return true;
    };
    return catalogue.candidates(store.id, question, take);
}

Status countHits(Catalogue& catalogue, const Store& store, const modDictation::Search& what,
                 std::int32_t byField, const Catalogue::Taker& take, SearchReport& report,
                 const modDictation::SearchMeans& means) {
    const Asking asking(catalogue, store, what, means, report);
    if (!asking.status.ok() || report.stopped)
        return asking.status;
    const Question& question = asking.question;
    const auto column = groupingColumn(byField);
    const auto counted = [&](const Dictation& dictation, std::int64_t count) {
        report.hits += count;
        return take(dictation, count);
    };
    if (question.isExact && (column || byField == modDictation::noField))
        return catalogue.counts(store.id, question, column, counted);
    Taking taking(what, question, asking.now);
    const auto test = [&](const Dictation& dictation, std::int64_t count) {
        return !taking.isHit(dictation) || counted(dictation, count);
    };
    return catalogue.candidates(store.id, question, test);
}

} // namespace ov::catalogue
