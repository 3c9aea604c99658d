// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "export/telling_columns.h"

#include "dictation/field_table.h"

#include <algorithm>
#include <iterator>

namespace ov::exporting {

namespace {

// Of a column and whether a row was seen that it is not empty in.
struct Seen {
    const Column* column;
    bool tells = false;
};

bool isFileName(const Column& column) {
    return column.field == modDictation::field_id::name;
}

} // namespace

std::optional<std::vector<Column>> tellingColumns(const std::vector<Column>& columns,
                                                  const RowSource& rows, const GoOn& goOn) {
    std::vector<Seen> seen;
    for (const Column& column : columns)
        if (!isFileName(column))
            seen.push_back({&column});
    const auto areFound = [&] { return std::ranges::all_of(seen, &Seen::tells); };
    // Nearly always the first rows show it.
    for (std::int64_t row = 0; row < rows.count() && !areFound(); ++row) {
        for (Seen& each : seen)
            each.tells = each.tells || !rows.text(*each.column, row).empty();
        if (!goOn(row))
            return std::nullopt;
    }
    std::vector<Column> telling;
    for (const Seen& each : seen)
        if (each.tells)
            telling.push_back(*each.column);
    return telling.empty() ? columns : telling;
}

} // namespace ov::exporting
