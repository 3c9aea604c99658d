// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "dictation/field_table.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

// One criterion of a search, the text it is stored and passed around in, and how it reads.

namespace ov::modDictation {

// Operators. The numbers are stored in criteria files: never renumber. 22 and 23 (begins with,
// ends with) are offered nowhere.
namespace operator_id {
constexpr std::int32_t any = 1; // of an unreadable criterion
constexpr std::int32_t yesterday = 2;
constexpr std::int32_t today = 3;
constexpr std::int32_t tomorrow = 4;
constexpr std::int32_t last7Days = 5; // today and the six days before
constexpr std::int32_t next7Days = 6; // today and the six days after
constexpr std::int32_t lastWeek = 7;
constexpr std::int32_t thisWeek = 8;
constexpr std::int32_t nextWeek = 9;
constexpr std::int32_t lastMonth = 10;
constexpr std::int32_t thisMonth = 11;
constexpr std::int32_t nextMonth = 12;
constexpr std::int32_t onDate = 13;
constexpr std::int32_t onOrAfter = 14;
constexpr std::int32_t onOrBefore = 15;
constexpr std::int32_t betweenDates = 16; // ranges include both ends
constexpr std::int32_t contains = 17;
constexpr std::int32_t is = 18;
constexpr std::int32_t containsNot = 19;
constexpr std::int32_t isEmpty = 20;
constexpr std::int32_t isNotEmpty = 21;
constexpr std::int32_t notEqual = 24;
constexpr std::int32_t equal = 25;
constexpr std::int32_t atMost = 26;
constexpr std::int32_t atLeast = 27;
constexpr std::int32_t moreThan = 28;
constexpr std::int32_t lessThan = 29;
constexpr std::int32_t betweenNumbers = 30;
constexpr std::int32_t betweenTimes = 31;
constexpr std::int32_t marked = 32;
constexpr std::int32_t notMarked = 33;
} // namespace operator_id

struct Criterion {
    std::int32_t Field = noField;
    std::int32_t Operator = operator_id::any;
    std::string Value1;
    std::string Value2;
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

// The operators that a value type offers, in the order in which they are offered.
std::span<const std::int32_t> offeredOperators(ValueType type) noexcept;

// How many values an operator takes, 0 to 2.
int operatorValueCount(std::int32_t operatorId) noexcept;

// Empty outside 1 to 33.
std::string GetOperatorText(std::int32_t operatorId);

// The codes that a field with a code list offers, in their order; empty for any other field.
std::span<const std::int32_t> offeredCodes(std::int32_t field) noexcept;

// The values as shown: dates in the locale's short form, codes as their text. A date value that
// is no date is left out.
std::string GetCriterionValueText(std::int32_t field, std::string_view value1,
                                  std::string_view value2);

// '"Author" contains Smith'; the name of field 0 alone for an unreadable criterion.
std::string GetCriterionText(const Criterion& criterion);
std::string GetCriterionText(std::string_view criteriaString);

} // namespace ov::modDictation
