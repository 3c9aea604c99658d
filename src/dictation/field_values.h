// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <limits>
#include <string>
#include <string_view>

// A dictation's fields as a person reads them and as a list sorts them. The result list, export
// and the terminal all take them from here.

namespace ov::modDictation {

// What a list shows for the search field: text as decoded, dates in the locale's short form with
// the time where the name has one, lengths as hh:mm:ss, codes as their text. A value that is not
// what its field should hold is shown as it stands; an absent one is empty.
std::string fieldText(std::int32_t field, std::string_view path, std::string_view name);

// True for fields that sort by fieldNumber, false for those that sort by their text.
bool sortsByNumber(std::int32_t field) noexcept;

// Sorts before every number.
constexpr double noNumber = -std::numeric_limits<double>::infinity();

// The number that a field sorts by: the serial of a date, the seconds of a length, a code;
// noNumber where it has none.
double fieldNumber(std::int32_t field, std::string_view path, std::string_view name);

} // namespace ov::modDictation
