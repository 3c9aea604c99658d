// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "control/catalogue/criterion_counts.h"

#include "catalogue/catalogue_search.h"
#include "control/catalogue/catalogue_answer.h"

#include <utility>

namespace ov {

using modDictation::Criterion;

std::optional<CriterionCounts> countCriteria(const std::string& place,
                                             const modDictation::Search& what,
                                             const std::stop_token& stop) {
    CatalogueAnswer answer;
    const auto opened = openFor(place, what.root, answer);
    if (!answer.store)
        return std::nullopt;
    const auto count = [&](std::vector<Criterion> criteria) -> std::optional<std::int64_t> {
        modDictation::Search alone = what;
        alone.criteria = std::move(criteria);
        alone.all = true;
        modDictation::SearchReport report;
        const platform::Status counted = catalogue::countHits(
            *opened, *answer.store, alone, modDictation::noField,
            [](const auto&, std::int64_t) { return true; }, report, {.stop = stop});
        return counted.ok() && !stop.stop_requested() ? std::optional(report.hits) : std::nullopt;
    };
    const auto all = count({});
    if (!all)
        return std::nullopt;
    CriterionCounts counts{*all, {}};
    if (!what.all) // as a walk, which then does not look at all of them
        return counts;
    for (Criterion criterion : what.criteria) {
        criterion.indented = false;
        const auto matched = count({criterion});
        if (!matched)
            return std::nullopt;
        counts.matched.push_back(*matched);
    }
    return counts;
}

} // namespace ov
