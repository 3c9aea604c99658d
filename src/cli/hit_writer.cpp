// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "cli/hit_writer.h"

#include "cli/shown_text.h"
#include "dictation/dictation_record.h"
#include "dictation/field_table.h"
#include "dictation/field_values.h"
#include "platform/files.h"
#include "platform/text.h"

#include <nlohmann/json.hpp>

#include <utility>

namespace ov::cli {

namespace {

std::string nativePath(std::string_view directory, std::string_view fileName) {
    return platform::toNativePath(std::string(directory).append(fileName));
}

std::string columnText(const Column& column, std::string_view directory,
                       std::string_view fileName) {
    if (column.field == pathColumn)
        return nativePath(directory, fileName);
    std::string buffer;
    return modDictation::fieldText(column.field, directory,
                                   modDictation::dictationName(fileName, buffer));
}

class PathsWriter final : public HitWriter {
public:
    PathsWriter(Output& output, bool escaped, bool zeroEnded)
        : output_(output), escaped_(escaped && !zeroEnded), end_(zeroEnded ? '\0' : '\n') {}

    void write(std::string_view directory, std::string_view fileName) override {
        std::string line = nativePath(directory, fileName);
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

    void write(std::string_view directory, std::string_view fileName) override {
        Row row;
        for (const Column& column : columns_)
            row.push_back(shownText(columnText(column, directory, fileName)));
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
            row.push_back(shownText(column.field == pathColumn
                                        ? column.key
                                        : modDictation::GetSearchFieldCaption(column.field, true)));
        return row;
    }

    Output& output_;
    std::vector<Column> columns_;
    std::vector<std::size_t> widths_; // empty while rows are held back
    std::vector<Row> held_;
};

// RFC 4180: CR LF, quotes around what needs them, doubled inside.
class CsvWriter final : public HitWriter {
public:
    CsvWriter(Output& output, std::vector<Column> columns, bool escaped)
        : output_(output), columns_(std::move(columns)), escaped_(escaped) {}

    void begin() override {
        std::string line;
        for (const Column& column : columns_)
            appendCell(column.key, line);
        print(std::move(line));
    }

    void write(std::string_view directory, std::string_view fileName) override {
        std::string line;
        for (const Column& column : columns_) {
            const std::string text = columnText(column, directory, fileName);
            appendCell(escaped_ ? shownText(text) : platform::textFromBytes(text), line);
        }
        print(std::move(line));
    }

private:
    // Every cell begins with its comma; the first one's is cut off here.
    void print(std::string line) { output_.write(line.append("\r\n").substr(1)); }

    static void appendCell(std::string_view text, std::string& line) {
        line.push_back(',');
        if (text.find_first_of("\",\r\n") == std::string_view::npos) {
            line.append(text);
            return;
        }
        line.push_back('"');
        for (const char c : text)
            line.append(c == '"' ? 2 : 1, c);
        line.push_back('"');
    }

    Output& output_;
    std::vector<Column> columns_;
    bool escaped_;
};

class JsonWriter final : public HitWriter {
public:
    JsonWriter(Output& output, std::vector<Column> columns, bool escaped)
        : output_(output), columns_(std::move(columns)), escaped_(escaped) {}

    void begin() override { output_.write("["); }

    void write(std::string_view directory, std::string_view fileName) override {
        nlohmann::ordered_json hit;
        hit["path"] = platform::textFromBytes(nativePath(directory, fileName));
        for (const Column& column : columns_)
            if (column.field != pathColumn)
                hit[column.key] = platform::textFromBytes(columnText(column, directory, fileName));
        output_.write(std::exchange(first_, false) ? "\n  " : ",\n  ");
        // The escapes of shownText are those of JSON.
        output_.write(escaped_ ? shownText(hit.dump()) : hit.dump());
    }

    void end() override { output_.write(first_ ? "]\n" : "\n]\n"); }

private:
    Output& output_;
    std::vector<Column> columns_;
    bool escaped_;
    bool first_ = true;
};

} // namespace

std::unique_ptr<HitWriter> makeHitWriter(const WriterOptions& options, Output& output) {
    switch (options.format) {
    case HitFormat::csv:
        return std::make_unique<CsvWriter>(output, options.columns, options.escaped);
    case HitFormat::json:
        return std::make_unique<JsonWriter>(output, options.columns, options.escaped);
    case HitFormat::paths:
        return std::make_unique<PathsWriter>(output, options.escaped, options.zeroEnded);
    case HitFormat::table:
        break;
    }
    return std::make_unique<TableWriter>(output, options.columns);
}

} // namespace ov::cli
