// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "dictation/field_table.h"
#include "dictation/search/operators.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

// One criterion of a search, the text it is stored and passed around in, and how it reads.

namespace ov::modDictation {

struct Criterion {
    std::int32_t Field = noField;
    std::int32_t Operator = operator_id::any;
    std::string Value1;
    std::string Value2;
    // In the group of the one above it in its list, see matching.h; no part of its string.
    bool indented = false;
    bool operator==(const Criterion&) const = default;
};

// Field id, operator id, first and second value, joined by the character with code 1. Nothing is
// escaped: values do not hold that character.
constexpr char criteriaSeparator = '\x01';
std::string BuildCriteriaString(std::int32_t field, std::int32_t operatorId,
                                std::string_view value1, std::string_view value2);

// A text that does not have exactly four parts gives the default Criterion.
Criterion ParseCriteriaString(std::string_view criteriaString);

// True for a text of exactly four parts.
bool isCriteriaString(std::string_view criteriaString) noexcept;

// True when both ask for the same: texts that differ only in letter case or in how their umlauts
// are written, and the same date in another form, are one.
bool isSameCriterion(std::string_view one, std::string_view other);

// What a criteria file holds: one criteria string a line, nothing else. Encodings are those of
// settings files.
struct CriteriaLines {
    std::vector<std::string> criteria;
    std::size_t skipped = 0; // lines that are none
};
CriteriaLines readCriteriaLines(std::string_view content);

// The values as shown: dates in the locale's short form, codes as their text. A date value that
// is no date is left out.
std::string GetCriterionValueText(std::int32_t field, std::string_view value1,
                                  std::string_view value2);

// '"Author" contains Smith'; the name of field 0 alone for an unreadable criterion.
std::string GetCriterionText(const Criterion& criterion);
std::string GetCriterionText(std::string_view criteriaString);

// The same, one of a group behind the word that joins it to the one above: 'or: "Author" contains
// Smith'. `all`: all criteria must match, or else any one of them.
std::string GetListedCriterionText(const Criterion& criterion, bool all);

} // namespace ov::modDictation
