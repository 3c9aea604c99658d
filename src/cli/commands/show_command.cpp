// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "cli/commands/show_command.h"

#include "cli/looks/table_layout.h"
#include "cli/looks/wrapped_row.h"
#include "cli/messages.h"
#include "cli/output.h"
#include "cli/shown_text.h"
#include "dictation/dictation_details.h"
#include "dictation/dictation_record.h"
#include "dictation/field_table.h"
#include "dictation/typed/criterion_text.h"
#include "export/row_writer.h"
#include "platform/files.h"
#include "platform/terminal/terminal.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <iterator>
#include <memory>
#include <vector>

namespace ov::cli {

namespace {

using modDictation::Detail;
using modDictation::Dictation;

// The first row is the titles. On a screen the cells of the last columns are wrapped where they
// have to be. Gives the widths of the columns.
std::vector<std::size_t> printRows(const std::vector<Row>& rows, std::size_t wrapped,
                                   const LookOptions& options, Output& output) {
    const Looks looks = looksOf(options);
    std::vector<std::size_t> widths = columnWidths(rows);
    if (looks.width) {
        std::vector<Giving> givings(widths.size() - wrapped, Giving::never);
        givings.resize(widths.size(), Giving::first);
        widths = fittedWidths(std::move(widths), givings, *looks.width);
    }
    output.write(asTitles(tableLine(rows.front(), widths), looks));
    for (std::size_t i = 1; i < rows.size(); ++i)
        output.write(wrappedRow(rows[i], widths));
    return widths;
}

std::string typeName(modDictation::ValueType type) {
    constexpr std::array<const char*, 10> names = {"-",    "text",   "date",     "time",   "number",
                                                   "code", "status", "priority", "marker", "flag"};
    return names[static_cast<std::size_t>(type)];
}

Row rowOf(const Detail& detail) {
    return {detail.key.empty() ? "-" : detail.key, shownText(detail.caption),
            shownText(detail.shown), shownText(detail.raw)};
}

// A table for each, under its path when there are several.
class FieldTables final : public exporting::RowWriter {
public:
    FieldTables(const ShowOptions& options, Output& output)
        : several_(options.files.size() > 1), looks_(options.looks), output_(output) {}

    void write(const Dictation& dictation) override {
        if (several_)
            output_.write((first_ ? "" : "\n") + shownText(nativePathOf(dictation)) + "\n");
        first_ = false;
        std::vector<Row> rows = {{"KEY", "FIELD", "SHOWN", "RAW"}};
        std::ranges::transform(fieldDetails(dictation), std::back_inserter(rows), rowOf);
        const std::vector<std::size_t> widths = printRows(rows, 2, looks_, output_);
        // The longest ones come last, do not count for the columns and stay whole, to be copied.
        for (const Detail& detail : wholeDetails(dictation))
            output_.write(tableLine(rowOf(detail), widths));
    }

private:
    bool several_;
    LookOptions looks_;
    bool first_ = true;
    Output& output_;
};

std::vector<Column> allColumns() {
    std::vector<Column> columns;
    for (const modDictation::FieldDefinition& field : modDictation::fieldDefinitions())
        if (!field.key.empty())
            columns.push_back(exporting::columnOf(field.id));
    return columns;
}

std::unique_ptr<exporting::RowWriter> writerFor(const ShowOptions& options, Output& output) {
    if (options.format == HitFormat::table)
        return std::make_unique<FieldTables>(options, output);
    return exporting::makeJsonWriter(allColumns(),
                                     {.lines = options.format == HitFormat::jsonl,
                                      .raw = true,
                                      .filter = platform::isTerminal(stdout) ? shownText : nullptr},
                                     output);
}

// Why it cannot be shown; empty when it can.
std::string problemOf(const std::string& file) {
    const std::string path = platform::fromNativePath(file);
    switch (platform::fileKind(path)) {
    case platform::FileKind::missing: {
        platform::FileStamp none;
        const platform::Status why = platform::readFileStamp(path, none);
        return why.ok() || why.kind() == platform::Status::Kind::missing ? "there is no such file"
                                                                         : why.text();
    }
    case platform::FileKind::directory:
        return "is a folder; show takes dictations, find searches folders";
    default:
        break;
    }
    const bool isDictation =
        platform::fileExists(path) &&
        modDictation::hasDictationEnding(modDictation::dictationOfPath(path).name);
    return isDictation ? "" : "not a dictation; its name does not end in \".WAV\"";
}

} // namespace

ExitCode runShow(const ShowOptions& options) {
    Output output(stdout);
    if (options.format == HitFormat::table)
        output.setPager(pagerFor(options.looks.pager));
    const auto writer = writerFor(options, output);
    std::size_t shown = 0;
    writer->begin();
    for (const std::string& file : options.files) {
        if (const std::string problem = problemOf(file); !problem.empty()) {
            complain(file + ": " + problem);
            continue;
        }
        ++shown;
        const std::string path = platform::fromNativePath(file);
        writer->write(modDictation::dictationOfPath(path));
    }
    writer->end();
    return output.finish(shown == options.files.size() ? ExitCode::found : ExitCode::unreadable);
}

ExitCode runFields(const LookOptions& looks) {
    std::vector<Row> rows = {{"ID", "KEY", "FIELD", "TYPE", "OPERATORS"}};
    for (const modDictation::FieldDefinition& field : modDictation::fieldDefinitions())
        if (!field.key.empty())
            rows.push_back({std::to_string(field.id), std::string(field.key),
                            shownText(modDictation::GetSearchFieldCaption(field.id, true)),
                            typeName(field.valueType), modDictation::operatorWords(field.id)});
    Output output(stdout);
    output.setPager(pagerFor(looks.pager));
    printRows(rows, 1, looks, output);
    return output.finish(ExitCode::found);
}

} // namespace ov::cli
