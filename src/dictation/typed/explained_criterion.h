// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "dictation/search/criterion.h"
#include "platform/locale.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace ov::modDictation {

// How a search understands a criterion, in the user's language, with the dates that count from the
// day of `now`: '"Dictated" is this week (2026-11-16 to 2026-11-22)'. One of a group stands behind
// blanks and the word that joins it to the one above; `all` as in a Search.
std::string explainedCriterion(const Criterion& criterion, bool all, const platform::DateTime& now);

// How many of the criteria are what a free word makes, from the first on; 0 when it is none. And
// how they are understood together: 'any text contains knee'.
std::size_t freeWordLength(std::span<const Criterion> criteria, bool all);
std::string explainedFreeWord(const Criterion& first, bool all);

// "1,204 of 20,113": dictations that meet it, and how many were asked.
std::string countOfAll(std::int64_t matched, std::int64_t tested);

// Lists show a code, "Normal" as a priority, also where a name says nothing. For a criterion that
// compares with that code: the one that is met by these names. Nothing for others.
std::optional<Criterion> criterionOfAssumed(const Criterion& criterion);

// What such a criterion makes of these names, with another one that tells them apart; `counted` is
// how many there are.
std::string assumedNote(const Criterion& criterion, std::string_view counted);

} // namespace ov::modDictation
