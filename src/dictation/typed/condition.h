// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "dictation/search/criterion.h"
#include "platform/locale.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace ov::modDictation {

// What somebody asks of a dictation, before it has the shape that the criteria of a search have.
struct Condition {
    enum class Kind : std::uint8_t { criterion, anyOf, allOf };
    Kind kind = Kind::allOf;
    Criterion criterion = {};          // of that kind
    std::vector<Condition> parts = {}; // of the others; none of none is never met, all of none is
};

Condition conditionOf(Criterion criterion);
// The only part, or the parts joined.
Condition joined(Condition::Kind kind, std::vector<Condition> parts);

// What the dictations meet that do not meet this one; those that lack the field are among them.
// Dates that count from today become those that they are on the day of `now`. Nothing where no
// criterion says it: a text that is not exactly another one. A value that cannot be read as what
// the field holds meets neither.
constexpr std::string_view noOpposite =
    "no criterion says that a text is not exactly another one, only that it does not contain it";
std::optional<Condition> opposite(const Condition& condition, const platform::DateTime& now);

// As criteria with their groups: `all` says whether a search wants all criteria met, or any one.
// Nothing when they would be more than anybody reads and than a search should test.
constexpr std::size_t mostCriteria = 500;
std::optional<std::vector<Criterion>> criteriaOf(const Condition& condition, bool all);

} // namespace ov::modDictation
