// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "dictation/filter/filter_words.h"

#include "dictation/filter/typed_line.h"
#include "platform/text.h"

#include <algorithm>
#include <span>
#include <utility>

namespace ov::modDictation {

namespace {

using Group = std::span<const Criterion>;

bool comparesText(const Criterion& criterion) {
    return criterion.Operator == operator_id::contains ||
           criterion.Operator == operator_id::containsNot;
}

FilterReading readingOf(std::string_view text, const TypedLine& line, const QuickSearch& search) {
    FilterReading reading;
    std::size_t done = 0;
    for (const auto& [first, end] : search.leftOut) {
        const std::size_t behind = line.places[end - 1] + line.parts[end - 1].text.size();
        const std::size_t start = line.places[first];
        reading.leftOut.emplace_back(text.substr(start, behind - start));
        reading.text += text.substr(done, start - done);
        done = std::min(text.find_first_not_of(" \t", behind), text.size());
    }
    reading.text += text.substr(done);
    reading.text = platform::trimmed(reading.text);
    return reading;
}

bool isNarrower(const Criterion& one, const Criterion& wider) {
    if (one.Field != wider.Field || one.Operator != wider.Operator)
        return false;
    if (one.Operator == operator_id::contains)
        return one.Value1.find(wider.Value1) != std::string::npos;
    if (one.Operator == operator_id::containsNot)
        return wider.Value1.find(one.Value1) != std::string::npos;
    return one.Value1 == wider.Value1 && one.Value2 == wider.Value2;
}

// What meets one of `group` also meets one of `wider`.
bool isNarrowerGroup(Group group, Group wider) {
    return std::ranges::all_of(group, [&](const Criterion& one) {
        return std::ranges::any_of(wider,
                                   [&](const Criterion& other) { return isNarrower(one, other); });
    });
}

} // namespace

std::vector<std::span<const Criterion>> groupsOf(std::span<const Criterion> criteria) {
    std::vector<Group> groups;
    for (std::size_t first = 0; first < criteria.size();) {
        std::size_t end = first + 1;
        while (end < criteria.size() && criteria[end].indented)
            ++end;
        groups.push_back(criteria.subspan(first, end - first));
        first = end;
    }
    return groups;
}

FilterWords filterWords(std::string_view text, const platform::DateTime& now) {
    const TypedLine line(text);
    QuickSearch search = readQuickParts(line.parts, {.now = now, .all = true, .filtersRows = true});
    if (!search.ok())
        return {{}, {.text = {}, .leftOut = {}, .isTooLong = true}};
    for (Criterion& criterion : search.criteria)
        if (comparesText(criterion))
            criterion.Value1 = platform::upperCase(criterion.Value1);
    return {std::move(search.criteria), readingOf(text, line, search)};
}

bool narrow(const std::vector<Criterion>& criteria, const std::vector<Criterion>& wider) {
    const std::vector<Group> groups = groupsOf(criteria);
    return std::ranges::all_of(groupsOf(wider), [&](Group old) {
        return std::ranges::any_of(groups,
                                   [&](Group group) { return isNarrowerGroup(group, old); });
    });
}

} // namespace ov::modDictation
