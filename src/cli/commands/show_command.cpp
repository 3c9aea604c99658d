// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "cli/commands/show_command.h"

#include "cli/criterion_text.h"
#include "cli/messages.h"
#include "cli/output.h"
#include "cli/shown_text.h"
#include "dictation/dictation_record.h"
#include "dictation/field_table.h"
#include "dictation/field_values.h"
#include "platform/files.h"
#include "support/numbers.h"

#include <algorithm>
#include <array>
#include <vector>

namespace ov::cli {

namespace {

using modDictation::Dictation;
using modDictation::FieldDefinition;

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

// A field as the name has it, escapes included; "-" for one that is not there.
std::string_view rawText(std::int32_t dictationField, std::string_view name) {
    return modDictation::findFieldValue(name, modDictation::fieldTag(dictationField)).value_or("-");
}

Row fieldRow(const FieldDefinition& field, const Dictation& dictation, std::string_view raw) {
    return {std::string(field.key), shownText(modDictation::GetSearchFieldCaption(field.id, true)),
            shownText(modDictation::shownValue(field.id, dictation)), shownText(raw)};
}

bool isInTable(std::int32_t dictationField) {
    const auto table = modDictation::fieldDefinitions();
    return std::any_of(table.begin(), table.end(), [dictationField](const FieldDefinition& field) {
        return !field.key.empty() && field.dictationField == dictationField;
    });
}

// What the name carries beside the fields that can be searched.
void addOtherFields(const Dictation& dictation, std::string_view name, std::vector<Row>& rows) {
    constexpr std::string_view separator = "@@";
    for (std::size_t at = name.find(separator); at != std::string_view::npos;
         at = name.find(separator, at + 1)) {
        const std::string_view rest = name.substr(at + separator.size());
        const std::string_view digits = rest.substr(0, rest.find('$'));
        const std::int32_t number = isAllDigits(digits) ? leadingInt32(digits) : 0;
        const std::string tag = modDictation::fieldTag(number);
        // A number with leading zeros is no tag; of two equal ones readers take the first.
        if (number == 0 || isInTable(number) || name.find(tag) != at)
            continue;
        std::string text;
        modDictation::readField(number, dictation, text);
        rows.push_back({"-", tag, shownText(text), shownText(rawText(number, name))});
    }
}

std::vector<Row> fieldRows(const Dictation& dictation, std::string_view name) {
    using namespace modDictation;
    std::vector<Row> rows = {{"KEY", "FIELD", "SHOWN", "RAW"}};
    for (const FieldDefinition& field : fieldDefinitions())
        if (field.dictationField > 0)
            rows.push_back(fieldRow(field, dictation, rawText(field.dictationField, name)));
    addOtherFields(dictation, name, rows);
    return rows;
}

// What does not come from a field of the name, but from the path or the name as a whole.
void addDerivedFields(const Dictation& dictation, std::string_view name, std::vector<Row>& rows) {
    using namespace modDictation;
    const std::string native = platform::toNativePath(dictation.directory);
    for (const FieldDefinition& field : fieldDefinitions())
        if (field.dictationField < 0 && !field.key.empty()) {
            const bool isFolder = field.dictationField == dictation_field::directory;
            rows.push_back(fieldRow(field, dictation, isFolder ? native : name));
        }
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
    std::string buffer;
    const std::string_view name = modDictation::dictationName(dictation.name, buffer);
    std::vector<Row> rows = fieldRows(dictation, name);
    // The longest ones come last and do not count for the columns.
    const std::vector<std::size_t> widths = columnWidths(rows);
    addDerivedFields(dictation, name, rows);
    return printRows(rows, widths);
}

ExitCode runFields() {
    std::vector<Row> rows = {{"ID", "KEY", "FIELD", "TYPE", "OPERATORS"}};
    for (const FieldDefinition& field : modDictation::fieldDefinitions())
        if (!field.key.empty())
            rows.push_back({std::to_string(field.id), std::string(field.key),
                            shownText(modDictation::GetSearchFieldCaption(field.id, true)),
                            typeName(field.valueType), operatorWords(field.id)});
    return printRows(rows, columnWidths(rows));
}

} // namespace ov::cli
