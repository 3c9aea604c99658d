// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "dictation/search/criterion.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

// Criteria as they are typed in a terminal:
//
//   criterion = FIELD blank OPERATOR [ blank VALUE ]
//   FIELD     = a key of the field table ("author") or a field id
//   OPERATOR  = a word ("contains", ">=", "this-week") or an operator id
//   VALUE     = the rest of the text; "A..B" for operators that take two values
//
// A word stands for the operator that the field's value type offers: "is" is another one for text
// than for dates. Dates are ISO (2026-11-21) or in the locale's form; times are HH:MM or
// HH:MM:SS; codes are a number, the word that file names carry (ROH, HOCH) or the shown text.

namespace ov::modDictation {

struct ParsedCriterion {
    Criterion criterion;
    std::string error;      // what is wrong and what may stand there; empty when nothing is
    std::size_t offset = 0; // of what is wrong, in bytes, where the text is UTF-8
    std::size_t length = 0;
    bool ok() const noexcept { return error.empty(); }
};

// `text` may also be Windows-1252, as a terminal of that kind hands it over.
ParsedCriterion parseCriterion(std::string_view text);

// A text that parseCriterion() makes the same criterion of, whatever the locale, but for its place
// in a group; empty when there is none.
std::string typedCriterion(const Criterion& criterion);

// The field of a key, in any letter case, or of an id; noField when there is none.
std::int32_t fieldOfKey(std::string_view key);

// The words for the operators that a field offers, as a list for a person: "contains, is, ...".
std::string operatorWords(std::int32_t field);

// The keys of all fields, as a list for a person.
std::string fieldKeys();

} // namespace ov::modDictation
