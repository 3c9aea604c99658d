// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "cli/commands/show_command.h"

#include "cli/messages.h"
#include "cli/output.h"
#include "cli/shown_text.h"
#include "dictation/dictation_details.h"
#include "dictation/dictation_record.h"
#include "dictation/field_table.h"
#include "dictation/typed/criterion_text.h"
#include "platform/files.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <vector>

namespace ov::cli {

namespace {

using modDictation::Detail;
using modDictation::Dictation;

ExitCode printRows(const std::vector<Row>& rows, const std::vector<std::size_t>& widths) {
    Output output(stdout);
    for (const Row& row : rows)
        output.write(tableLine(row, widths));
    return output.finish(ExitCode::found);
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

} // namespace

ExitCode runShow(const std::string& file) {
    const std::string path = platform::fromNativePath(file);
    const Dictation dictation = modDictation::dictationOfPath(path);
    if (!platform::fileExists(path)) {
        complain(file + ": there is no such file");
        return ExitCode::unreadable;
    }
    if (!modDictation::hasDictationEnding(dictation.name)) {
        complain(file + ": not a dictation; its name does not end in \".WAV\"");
        return ExitCode::unreadable;
    }
    std::vector<Row> rows = {{"KEY", "FIELD", "SHOWN", "RAW"}};
    std::ranges::transform(fieldDetails(dictation), std::back_inserter(rows), rowOf);
    // The longest ones come last and do not count for the columns.
    const std::vector<std::size_t> widths = columnWidths(rows);
    std::ranges::transform(wholeDetails(dictation), std::back_inserter(rows), rowOf);
    return printRows(rows, widths);
}

ExitCode runFields() {
    std::vector<Row> rows = {{"ID", "KEY", "FIELD", "TYPE", "OPERATORS"}};
    for (const modDictation::FieldDefinition& field : modDictation::fieldDefinitions())
        if (!field.key.empty())
            rows.push_back({std::to_string(field.id), std::string(field.key),
                            shownText(modDictation::GetSearchFieldCaption(field.id, true)),
                            typeName(field.valueType), modDictation::operatorWords(field.id)});
    return printRows(rows, columnWidths(rows));
}

} // namespace ov::cli
