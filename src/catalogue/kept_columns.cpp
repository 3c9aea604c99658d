// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "catalogue/kept_columns.h"

#include <algorithm>
#include <array>

namespace ov::catalogue {

namespace {

namespace id = modDictation::field_id;
using K = Keeping;

// An index pays where a criterion leaves few dictations; each costs the update a tenth.
constexpr std::array<KeptColumn, columnCount> allColumns = {{
    {id::status, "status", K::status, false},
    {id::priority, "priority", K::priority, false},
    {id::marker, "marker", K::marker, false},
    {id::flags, "flags", K::flags, false},
    {id::status2, "status2", K::status, false},
    {id::author, "author", K::text, true},
    {id::authorCode, "author_code", K::text, false},
    {id::typist, "typist", K::text, false},
    {id::dictated, "dictated", K::day, true},
    {id::length, "length", K::seconds, false},
    {id::changed, "changed", K::day, false},
    {id::due, "due", K::day, false},
    {id::file, "file", K::text, true},
    {id::subject, "subject", K::text, false},
    {id::note1, "note1", K::text, false},
    {id::note2, "note2", K::text, false},
    {id::column1, "column1", K::text, false},
    {id::column2, "column2", K::text, false},
    {id::group, "work_group", K::text, false},
    {id::worktype, "worktype", K::text, false},
    {id::number, "number", K::ownText, false},
}};

} // namespace

std::span<const KeptColumn, columnCount> keptColumns() noexcept {
    return allColumns;
}

std::optional<std::size_t> columnOfField(std::int32_t field) noexcept {
    const auto* const found = std::ranges::find(allColumns, field, &KeptColumn::field);
    if (found == allColumns.end())
        return std::nullopt;
    return static_cast<std::size_t>(found - allColumns.begin());
}

} // namespace ov::catalogue
