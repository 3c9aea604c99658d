// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "dictation/field_table.h"

#include <cstdint>
#include <span>
#include <string>

// What a criterion asks of a field's value.

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

// The operators that a value type offers, in the order in which they are offered.
std::span<const std::int32_t> offeredOperators(ValueType type) noexcept;

// How many values an operator takes, 0 to 2.
int operatorValueCount(std::int32_t operatorId) noexcept;

// Empty outside 1 to 33.
std::string GetOperatorText(std::int32_t operatorId);

} // namespace ov::modDictation
