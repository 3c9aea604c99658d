// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "dictation/field_table.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

// What a catalogue keeps of each dictation beside its name: a number for each field that is worth
// it, which tells as much of the value as criteria compare. What is not kept can be searched all
// the same, by looking at the names.

namespace ov::catalogue {

// Stored in catalogues: whoever changes it raises tablesVersion.
enum class Keeping : std::uint8_t {
    text,     // the number of the text in the catalogue's own list of texts
    ownText,  // the text, in upper case: nearly every dictation has another one
    day,      // the serial day, counted from firstDay
    seconds,  // the length
    status,   // the code
    priority, // the code
    marker,   // one of the two below
    flags,    // the bits, where they are written as a plain number
};

// The number that stands for a value; first + n for a value n.
namespace kept {
constexpr std::int64_t absent = 0; // the name has no such field
constexpr std::int64_t empty = 1;
constexpr std::int64_t other = 2; // a value that is not what the field should hold
constexpr std::int64_t first = 3;
constexpr std::int64_t notMarked = first; // of markers
constexpr std::int64_t marked = first + 1;
} // namespace kept

constexpr std::int32_t firstDay = -700'000; // before the year 100: all days are above it

struct KeptColumn {
    std::int32_t field = modDictation::noField;
    std::string_view name; // of the column in the tables
    Keeping keeping = Keeping::text;
    bool hasIndex = false;
};

constexpr std::size_t columnCount = 21;

std::span<const KeptColumn, columnCount> keptColumns() noexcept;

// The place in keptColumns(); nothing for a field that is not kept.
std::optional<std::size_t> columnOfField(std::int32_t field) noexcept;

} // namespace ov::catalogue
