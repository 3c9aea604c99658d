// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "cli/show_command.h"

#include <algorithm>
#include <array>
#include <vector>

#include "cli/criterion_text.h"
#include "cli/hit_writer.h"
#include "cli/messages.h"
#include "cli/shown_text.h"
#include "dictation/dictation_record.h"
#include "dictation/field_table.h"
#include "dictation/field_values.h"
#include "platform/files.h"
#include "support/modFilePath.h"

namespace ov::cli {

namespace {

using Row = std::vector<std::string>;

void printRows(const std::vector<Row>& rows, Output& output) {
    std::vector<std::size_t> widths(rows.front().size());
    for (const Row& row : rows)
        for (std::size_t i = 0; i < row.size(); ++i)
            widths[i] = std::max(widths[i], columnCount(row[i]));
    for (const Row& row : rows) {
        std::string line;
        for (std::size_t i = 0; i < row.size(); ++i)
            line.append(row[i]).append(widths[i] - columnCount(row[i]) + 2, ' ');
        line.erase(line.find_last_not_of(' ') + 1);
        output.write(line + "\n");
    }
}

ExitCode finish(Output& output) {
    output.flush();
    if (!output.failed())
        return ExitCode::found;
    complain("cannot write: " + output.failure());
    return ExitCode::unreadable;
}

std::string typeName(modDictation::ValueType type) {
    constexpr std::array<const char*, 10> names = {"-",    "text",   "date",     "time",   "number",
                                                   "code", "status", "priority", "marker", "flag"};
    return names[static_cast<std::size_t>(type)];
}

Row fieldRow(const modDictation::FieldDefinition& field, std::string_view directory,
             std::string_view name) {
    std::string raw;
    const bool present =
        modDictation::GetDictationField(field.dictationField, directory, name, raw);
    return {std::string(field.key), modDictation::GetSearchFieldCaption(field.id, true),
            present ? shownText(raw) : "-",
            shownText(modDictation::fieldText(field.id, directory, name))};
}

} // namespace

ExitCode runShow(const std::string& file) {
    const std::string path = platform::fromNativePath(file);
    const std::string_view fileName = modFilePath::namePart(path);
    if (!platform::fileExists(path) || !modDictation::hasDictationEnding(fileName)) {
        complain(file + (platform::fileExists(path) ? ": not a dictation; its name does not end in "
                                                      "\".WAV\""
                                                    : ": no such file"));
        return ExitCode::unreadable;
    }
    std::string buffer;
    const std::string_view name = modDictation::dictationName(fileName, buffer);
    std::vector<Row> rows = {{"KEY", "FIELD", "VALUE", "SHOWN"}};
    for (const modDictation::FieldDefinition& field : modDictation::fieldDefinitions())
        if (!field.key.empty())
            rows.push_back(fieldRow(field, modFilePath::directoryPart(path), name));
    Output output(stdout);
    printRows(rows, output);
    return finish(output);
}

ExitCode runFields() {
    std::vector<Row> rows = {{"ID", "KEY", "FIELD", "TYPE", "OPERATORS"}};
    for (const modDictation::FieldDefinition& field : modDictation::fieldDefinitions())
        if (!field.key.empty())
            rows.push_back({std::to_string(field.id), std::string(field.key),
                            modDictation::GetSearchFieldCaption(field.id, true),
                            typeName(field.valueType), operatorWords(field.id)});
    Output output(stdout);
    printRows(rows, output);
    return finish(output);
}

} // namespace ov::cli
