// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "cli/hit_writer.h"

#include "cli/shown_text.h"
#include "export/cell.h"
#include "export/row_writer.h"

#include <utility>

namespace ov::cli {

namespace {

using modDictation::Dictation;

class PathsWriter final : public HitWriter {
public:
    PathsWriter(Output& output, bool escaped, bool zeroEnded)
        : output_(output), escaped_(escaped && !zeroEnded), end_(zeroEnded ? '\0' : '\n') {}

    void write(const Dictation& dictation) override {
        std::string line = nativePathOf(dictation);
        if (escaped_)
            line = shownText(line);
        line.push_back(end_);
        output_.write(line);
    }

private:
    Output& output_;
    bool escaped_;
    char end_;
};

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

// The forms that exports have too.
class SharedWriter final : public HitWriter {
public:
    explicit SharedWriter(std::unique_ptr<exporting::RowWriter> writer)
        : writer_(std::move(writer)) {}

    void begin() override { writer_->begin(); }
    void write(const Dictation& dictation) override { writer_->write(dictation); }
    void end() override { writer_->end(); }

private:
    std::unique_ptr<exporting::RowWriter> writer_;
};

} // namespace

std::unique_ptr<HitWriter> makeHitWriter(const WriterOptions& options, Output& output) {
    const exporting::TextFilter filter = options.escaped ? shownText : nullptr;
    switch (options.format) {
    case HitFormat::csv:
        return std::make_unique<SharedWriter>(exporting::makeCsvWriter(
            options.columns, {.separator = options.separator, .filter = filter}, output));
    case HitFormat::json:
        return std::make_unique<SharedWriter>(
            exporting::makeJsonWriter(options.columns, filter, output));
    case HitFormat::paths:
        return std::make_unique<PathsWriter>(output, options.escaped, options.zeroEnded);
    case HitFormat::table:
        break;
    }
    return std::make_unique<TableWriter>(output, options.columns);
}

} // namespace ov::cli
