// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "dictation/search/criterion.h"
#include "platform/locale.h"

#include <cstdint>
#include <string>

namespace ov::modDictation {

// How a search understands a criterion, in the user's language, with the dates that count from the
// day of `now`: '"Dictated" is this week (2026-11-16 to 2026-11-22)'. One of a group stands behind
// blanks and the word that joins it to the one above; `all` as in a Search.
std::string explainedCriterion(const Criterion& criterion, bool all, const platform::DateTime& now);

// "1,204 of 20,113": dictations that meet it, and how many were asked.
std::string countOfAll(std::int64_t matched, std::int64_t tested);

} // namespace ov::modDictation
