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

constexpr const char* ellipsis = "\xE2\x80\xA6";

// Of the bytes of a text.
struct Range {
    std::size_t begin = 0;
    std::size_t end = 0;
};

constexpr std::size_t less(std::size_t columns, std::size_t taken) noexcept {
    return columns - std::min(columns, taken);
}

// Where the longest end of the text begins that takes no more columns than these.
std::size_t endWithin(std::string_view text, std::size_t columns) {
    const std::size_t passed = bytesWithin(text, less(columnCount(text), columns));
    const std::size_t isWide = columnCount(text.substr(passed)) > columns ? 2 : 0;
    return passed + bytesWithin(text.substr(passed), isWide);
}

std::vector<Range> rangesOf(const std::vector<bool>& marks) {
    std::vector<Range> ranges;
    for (auto first = std::ranges::find(marks, true); first != marks.end();) {
        const auto end = std::find(first, marks.end(), false);
        ranges.push_back({static_cast<std::size_t>(first - marks.begin()),
                          static_cast<std::size_t>(end - marks.begin())});
        first = std::find(end, marks.end(), true);
    }
    return ranges;
}

// What stays in sight with the range in its middle, or as near to that as the ends allow.
Range around(std::string_view text, Range range, std::size_t columns) {
    const std::size_t room = less(columns, 2);
    const std::size_t taken = columnCount(text.substr(range.begin, range.end - range.begin));
    const std::size_t begin = endWithin(text.substr(0, range.begin), less(room, taken) / 2);
    if (begin == 0)
        return {0, bytesWithin(text, less(columns, 1))};
    if (const std::size_t last = endWithin(text, less(columns, 1)); begin >= last)
        return {last, text.size()};
    return {begin, begin + bytesWithin(text.substr(begin), room)};
}

Range seenOf(const MarkedCell& cell, std::size_t columns, bool endTellsMore) {
    const std::size_t room = less(columns, 1);
    const Range usual = endTellsMore ? Range{endWithin(cell.text, room), cell.text.size()}
                                     : Range{0, bytesWithin(cell.text, room)};
    const std::vector<Range> marked = rangesOf(cell.marks);
    const bool isSeen = std::ranges::any_of(marked, [&usual](const Range& range) {
        return range.begin >= usual.begin && range.end <= usual.end;
    });
    constexpr std::size_t ellipses = 2;
    return marked.empty() || isSeen || columns <= ellipses
               ? usual
               : around(cell.text, marked.front(), columns);
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
    for (const Giving giving : {Giving::first, Giving::second, Giving::last})
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

MarkedCell cutCell(MarkedCell cell, std::size_t columns, const exporting::Column& column) {
    if (columnCount(cell.text) <= columns)
        return cell;
    const Range seen = seenOf(cell, columns, isPathLike(column));
    MarkedCell cut;
    const auto leaveOut = [&cut] {
        cut.text += ellipsis;
        cut.marks.resize(cut.text.size());
    };
    if (seen.begin > 0)
        leaveOut();
    cut.text.append(cell.text, seen.begin, seen.end - seen.begin);
    const auto marks = cell.marks.begin();
    cut.marks.insert(cut.marks.end(), marks + static_cast<std::ptrdiff_t>(seen.begin),
                     marks + static_cast<std::ptrdiff_t>(seen.end));
    if (seen.end < cell.text.size())
        leaveOut();
    return cut;
}

} // namespace ov::cli
