// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "dictation/field_table.h"

#include <optional>
#include <string>
#include <string_view>

// The values of criteria as they are typed.

namespace ov::modDictation {

// As a criteria string stores it; nothing for one that the field cannot have.
std::optional<std::string> storedValue(const FieldDefinition& field, std::string_view text);

// What may stand there, for a person: "a date such as 2026-11-21 or 21.11.2026".
std::string expectedValue(const FieldDefinition& field);

// What is said where there is no value, and `expected` is.
std::string missingValue(const FieldDefinition& field, const std::string& expected);

// Its values are codes.
bool hasCodes(ValueType type) noexcept;

// The code that is typed in full or by the first letters, two or more, of no other one of the
// field. The number, the word that file names carry and the shown text count.
std::optional<std::string> codeOfLetters(const FieldDefinition& field, std::string_view text);

// Whether the second value of a range lies before the first; both as storedValue() has them.
bool isReversed(ValueType type, std::string_view first, std::string_view second);

} // namespace ov::modDictation
