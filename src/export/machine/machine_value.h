// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "dictation/dictation.h"

#include <cstdint>
#include <string>
#include <variant>

// What a name says, for programs: the same in every language and locale. docs/json.md promises it
// to their authors.

namespace ov::exporting {

// Nothing where the name says nothing, or no date or length where one should be.
using MachineValue = std::variant<std::monostate, std::int64_t, std::string>;

// Dates as ISO 8601 without a time zone, with the time where the name has one; lengths in seconds;
// codes as the word that names carry ("HOCH", also where the name has another spelling of it);
// flags, and numbers that read the same when they are written back, as numbers; the folder in full,
// as the system writes it; all else as text.
MachineValue machineValue(std::int32_t field, const modDictation::Dictation& dictation);

// Empty for nothing.
std::string machineText(const MachineValue& value);

// The native path in Base64 where it is no UTF-8 and so no text can hold it, else empty.
std::string pathBytes(const modDictation::Dictation& dictation);

} // namespace ov::exporting
