// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "control/results/search_hint.h"

#include "support/language/text_ids.h"
#include "widgets/text.h"

#include <algorithm>

namespace ov {

using widgets::text;

namespace {

// What could not be read may hold what was searched for.
bool isWhole(const modDictation::SearchReport& report) {
    return report.foldersUnreadable == 0 && report.namesSkipped == 0;
}

QString nothingFoundHint(const SearchOutcome& outcome, const modDictation::Search& searched) {
    if (!isWhole(outcome.report))
        return text(text_id::nothingInWhatWasRead);
    if (!outcome.isCounted)
        return {}; // why is not known yet
    if (outcome.report.filesTested == 0)
        return text(text_id::storeIsEmpty,
                    {widgets::toUtf8(widgets::nativePathText(searched.root))});
    if (!searched.all)
        return text(text_id::noneMeetsAny);
    const std::vector<bool> emptying = emptyingCriteria(outcome, searched);
    const auto count = std::ranges::count(emptying, true);
    if (count == 0)
        return text(text_id::noneMeetsTogether);
    QStringList lines{text(count == 1 ? text_id::noneMeetsThis : text_id::noneMeetsThese)};
    for (std::size_t i = 0; i < emptying.size(); ++i)
        if (emptying[i])
            lines << widgets::toQt(
                modDictation::GetListedCriterionText(searched.criteria.at(i), true));
    return lines.join(u'\n');
}

} // namespace

std::vector<bool> emptyingCriteria(const SearchOutcome& outcome,
                                   const modDictation::Search& searched) {
    const modDictation::SearchReport& report = outcome.report;
    if (outcome.hitCount > 0 || report.stopped || report.filesTested == 0 || !isWhole(report))
        return {};
    std::vector<bool> emptying;
    for (std::size_t i = 0; i < report.matched.size();) {
        const std::size_t first = i;
        bool isMet = false;
        do
            isMet = isMet || report.matched[i] > 0;
        while (++i < report.matched.size() && searched.criteria.at(i).indented);
        emptying.insert(emptying.end(), i - first, !isMet);
    }
    return emptying;
}

SearchHint searchHint(const std::string& root, bool hasCriteria,
                      const std::optional<SearchOutcome>& outcome,
                      const modDictation::Search& searched) {
    if (root.empty())
        return {text(text_id::noStoreChosen)};
    if (outcome && !outcome->report.stopped && !outcome->report.rootVanished)
        return {nothingFoundHint(*outcome, searched)};
    if (!hasCriteria)
        return {text(text_id::noCriteriaHint), true};
    return {text(text_id::resultHint)};
}

} // namespace ov
