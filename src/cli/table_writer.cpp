// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "cli/table_writer.h"

#include "cli/looks/file_link.h"
#include "cli/looks/table_layout.h"
#include "cli/shown_text.h"
#include "dictation/field_table.h"
#include "export/cell.h"

#include <algorithm>
#include <cstddef>
#include <functional>
#include <optional>
#include <utility>

namespace ov::cli {

namespace {

using modDictation::Dictation;

constexpr bool isOfFile(std::int32_t field) {
    return field == exporting::pathColumn || field == modDictation::field_id::name;
}

struct Line {
    Row cells;
    std::string path; // native, of the dictation, for a hyperlink
};

// Columns are as wide as the widest of the first lines, which are held back for that; a longer
// text further down takes the room it needs. On a screen what does not fit is cut.
class TableWriter final : public HitWriter {
public:
    TableWriter(std::vector<Column> columns, const Looks& looks, TextMarks marks, Output& output)
        : columns_(std::move(columns)), looks_(looks), marks_(std::move(marks)), output_(output) {}

    void write(const Dictation& dictation) override {
        Line line;
        for (const Column& column : columns_)
            line.cells.push_back(shownText(exporting::cellBytes(column, dictation)));
        if (looks_.hyperlinks)
            line.path = nativePathOf(dictation);
        if (!widths_.empty())
            return print(line);
        held_.push_back(std::move(line));
        if (held_.size() >= linesHeldBack)
            release();
    }

    void catchUp() override { release(); }
    void end() override { release(); }

private:
    static constexpr std::size_t linesHeldBack = 100;

    void release() {
        if (held_.empty())
            return;
        std::vector<Row> rows{titles()};
        for (const Line& line : held_)
            rows.push_back(line.cells);
        widths_ = fitted(columnWidths(rows));
        output_.write(asTitles(titleLine(rows.front()), looks_));
        for (const Line& line : std::exchange(held_, {}))
            print(line);
    }

    Row titles() const {
        Row row;
        for (const Column& column : columns_)
            row.push_back(
                shownText(column.field == exporting::pathColumn ? column.key : column.caption));
        return row;
    }

    // Of what was held back: a column gives way last where something was found in it.
    Giving givingIn(std::size_t i) const {
        const Giving giving = givingOf(columns_[i]);
        const auto isMarked = [this, i](const Line& line) {
            const std::vector<bool> marks = marks_.in(columns_[i].field, line.cells[i]);
            return std::ranges::find(marks, true) != marks.end();
        };
        return giving != Giving::never && std::ranges::any_of(held_, isMarked) ? Giving::last
                                                                               : giving;
    }

    std::vector<std::size_t> fitted(std::vector<std::size_t> widths) const {
        if (!looks_.width || lineWidth(widths) <= *looks_.width)
            return widths;
        std::vector<Giving> givings;
        for (std::size_t i = 0; i < columns_.size(); ++i)
            givings.push_back(givingIn(i));
        return fittedWidths(std::move(widths), givings, *looks_.width);
    }

    // Such a line stays as it is, also where one of its cells is too wide for the column.
    bool fits(const Row& cells) const {
        std::vector<std::size_t> widths = columnWidths({cells});
        std::ranges::transform(widths, widths_, widths.begin(), std::ranges::max);
        return !looks_.width || lineWidth(widths) <= *looks_.width;
    }

    MarkedCell cut(MarkedCell cell, std::size_t i) const {
        return givingOf(columns_[i]) == Giving::never
                   ? cell
                   : cutCell(std::move(cell), widths_[i], columns_[i]);
    }

    std::string titleLine(const Row& titles) const {
        Row cells = titles;
        for (std::size_t i = 0; !fits(titles) && i < cells.size(); ++i)
            cells[i] = cut({titles[i], std::vector<bool>(titles[i].size())}, i).text;
        return tableLine(cells, widths_);
    }

    // What is marked is found in the whole cell, of which it may not be all that is seen.
    void print(const Line& line) {
        if (looks_.isPlain()) {
            output_.write(tableLine(line.cells, widths_));
            return;
        }
        Row cells;
        Row adorned;
        const bool isWhole = fits(line.cells);
        for (std::size_t i = 0; i < line.cells.size(); ++i) {
            MarkedCell cell{line.cells[i], marks_.in(columns_[i].field, line.cells[i])};
            if (!isWhole)
                cell = cut(std::move(cell), i);
            adorned.push_back(looks_.color ? colored(cell.text, cell.marks) : cell.text);
            cells.push_back(std::move(cell.text));
        }
        if (const auto leading = linkCell(cells); leading && looks_.hyperlinks)
            adorned[*leading] = fileLink(adorned[*leading], line.path);
        output_.write(tableLine(cells, widths_, adorned));
    }

    // The cell that leads to the file: its name, or else the first that shows anything.
    std::optional<std::size_t> linkCell(const Row& cells) const {
        std::optional<std::size_t> best;
        for (std::size_t i = 0; i < cells.size(); ++i)
            if (!cells[i].empty() &&
                (!best || (isOfFile(columns_[i].field) && !isOfFile(columns_[*best].field))))
                best = i;
        return best;
    }

    std::vector<Column> columns_;
    Looks looks_;
    TextMarks marks_;
    Output& output_;
    std::vector<std::size_t> widths_; // empty while lines are held back
    std::vector<Line> held_;
};

} // namespace

std::unique_ptr<HitWriter> makeTableWriter(std::vector<Column> columns, const Looks& looks,
                                           TextMarks marks, Output& output) {
    return std::make_unique<TableWriter>(std::move(columns), looks, std::move(marks), output);
}

} // namespace ov::cli
