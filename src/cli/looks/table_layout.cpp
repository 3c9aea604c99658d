// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "cli/looks/table_layout.h"

#include "cli/shown_text.h"
#include "dictation/field_table.h"

#include <algorithm>
#include <array>
#include <numeric>

namespace ov::cli {

namespace {

using modDictation::ValueType;
namespace field_id = modDictation::field_id;

constexpr std::size_t gap = 2;
constexpr std::size_t fewest = 8; // letters of a column that was cut

constexpr std::array<std::int32_t, 6> longTexts = {exporting::pathColumn, field_id::folder,
                                                   field_id::name,        field_id::subject,
                                                   field_id::note1,       field_id::note2};

bool isPathLike(const exporting::Column& column) {
    return column.field == exporting::pathColumn || column.field == field_id::folder;
}

std::size_t excess(std::span<const std::size_t> widths, std::size_t room) {
    const std::size_t width = lineWidth(widths);
    return width > room ? width - room : 0;
}

} // namespace

Giving givingOf(const exporting::Column& column) {
    if (std::ranges::find(longTexts, column.field) != longTexts.end())
        return Giving::first;
    const ValueType type = modDictation::fieldDefinition(column.field).valueType;
    return type == ValueType::text || type == ValueType::flag ? Giving::second : Giving::never;
}

std::size_t lineWidth(std::span<const std::size_t> widths) {
    return widths.empty()
               ? 0
               : std::accumulate(widths.begin(), widths.end(), gap * (widths.size() - 1));
}

std::vector<std::size_t> fittedWidths(std::vector<std::size_t> widths,
                                      std::span<const Giving> givings, std::size_t room) {
    for (const Giving giving : {Giving::first, Giving::second})
        for (std::size_t over = excess(widths, room); over > 0; --over) {
            std::size_t* widest = nullptr;
            for (std::size_t i = 0; i < widths.size(); ++i)
                if (givings[i] == giving && widths[i] > (widest != nullptr ? *widest : fewest))
                    widest = &widths[i];
            if (widest == nullptr)
                break;
            --*widest;
        }
    return widths;
}

std::string cutCell(std::string_view shown, std::size_t columns, const exporting::Column& column) {
    if (columnCount(shown) <= columns)
        return std::string(shown);
    return isPathLike(column) ? fittedEnd(shown, columns) : fittedText(shown, columns);
}

} // namespace ov::cli
