// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "cli/table_writer.h"

#include "cli/shown_text.h"
#include "export/cell.h"

#include <cstddef>
#include <utility>

namespace ov::cli {

namespace {

using modDictation::Dictation;

// Columns are as wide as the widest of the first rows, which are held back for that; a longer
// text further down takes the room it needs.
class TableWriter final : public HitWriter {
public:
    TableWriter(Output& output, std::vector<Column> columns)
        : output_(output), columns_(std::move(columns)) {}

    void write(const Dictation& dictation) override {
        Row row;
        for (const Column& column : columns_)
            row.push_back(shownText(exporting::cellBytes(column, dictation)));
        if (!widths_.empty()) {
            output_.write(tableLine(row, widths_));
            return;
        }
        if (held_.empty())
            held_.push_back(header());
        held_.push_back(std::move(row));
        if (held_.size() > rowsHeldBack)
            release();
    }

    void end() override { release(); }

private:
    static constexpr std::size_t rowsHeldBack = 100;

    void release() {
        if (held_.empty())
            return;
        widths_ = columnWidths(held_);
        for (const Row& row : held_)
            output_.write(tableLine(row, widths_));
        held_.clear();
    }

    Row header() const {
        Row row;
        for (const Column& column : columns_)
            row.push_back(
                shownText(column.field == exporting::pathColumn ? column.key : column.caption));
        return row;
    }

    Output& output_;
    std::vector<Column> columns_;
    std::vector<std::size_t> widths_; // empty while rows are held back
    std::vector<Row> held_;
};

} // namespace

std::unique_ptr<HitWriter> makeTableWriter(std::vector<Column> columns, Output& output) {
    return std::make_unique<TableWriter>(output, std::move(columns));
}

} // namespace ov::cli
