// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "dictation/field_table.h"

#include "plugin/host_error.h"
#include "plugin/modOVPlugIn.h"
#include "support/language/modLanguage.h"
#include "support/log.h"
#include "support/modFilePath.h"
#include "support/modINI.h"
#include "support/modWFRoutines.h"
#include "support/numbers.h"
#include "support/unsaved.h"

#include <algorithm>
#include <array>
#include <utility>

namespace ov::modDictation {

namespace {

constexpr bool yes = true;
constexpr bool no = false;

// Columns 10, 12 and 17 hold the dates of 9, 11 and 16 as serials. They are visible but have no
// width. 26 is as wide as a screen and stands before the last, rarely used ones.
// clang-format off
constexpr std::array<FieldDefinition, searchFieldCount> definitions = {{
    // id vis  sel  type               kind                 field pos width  caption      host setting       key
    { 0, no,  no,  ValueType::none,     ValueKind::none,       0,  0,     0, 25002, 25001, "",                ""},
    { 1, yes, yes, ValueType::text,     ValueKind::textBox,   -2,  1,  1400, 25004, 25003, "",                "folder"},
    { 2, yes, yes, ValueType::status,   ValueKind::codeList,   2,  2,   280, 25008, 25007, "",                "status"},
    { 3, yes, yes, ValueType::marker,   ValueKind::none,      98,  3,   280, 25010, 25009, "",                "marker"},
    { 4, yes, yes, ValueType::text,     ValueKind::textBox,    3,  4,   700, 25012, 25011, "",                "author-code"},
    { 5, yes, yes, ValueType::text,     ValueKind::textBox,   14,  5,  1000, 25014, 25013, "",                "author"},
    { 6, yes, yes, ValueType::text,     ValueKind::textBox,   16,  6,  1100, 25016, 25015, "",                "typist"},
    { 7, yes, yes, ValueType::flag,     ValueKind::codeList,  17,  7,  1500, 25018, 25017, "",                "flags"},
    { 8, yes, yes, ValueType::text,     ValueKind::textBox,   12,  8,   600, 25020, 25019, "",                "number"},
    { 9, yes, yes, ValueType::date,     ValueKind::date,       7,  9,  1800, 25022, 25021, "",                "dictated"},
    {10, yes, no,  ValueType::number,   ValueKind::none,      -3, 10,     0,     0,     0, "",                ""},
    {11, yes, yes, ValueType::date,     ValueKind::date,      20, 11,  1800, 25040, 25039, "",                "changed"},
    {12, yes, no,  ValueType::number,   ValueKind::none,      -5, 12,     0,     0,     0, "",                ""},
    {13, yes, yes, ValueType::time,     ValueKind::time,       6, 13,  1000, 25024, 25023, "",                "length"},
    {14, yes, yes, ValueType::text,     ValueKind::textBox,    8, 14,  1000, 25042, 25041, "ColFiles",        "file"},
    {15, yes, yes, ValueType::priority, ValueKind::codeList,   5, 15,   280, 25026, 25025, "",                "priority"},
    {16, yes, yes, ValueType::date,     ValueKind::date,       4, 16,  1100, 25044, 25043, "ColScheduleTime", "due"},
    {17, yes, no,  ValueType::number,   ValueKind::none,      -4, 17,     0,     0,     0, "",                ""},
    {18, yes, yes, ValueType::text,     ValueKind::textBox,   11, 18,  2000, 25028, 25027, "",                "subject"},
    {19, yes, yes, ValueType::text,     ValueKind::textBox,   91, 19,  2000, 25030, 25029, "",                "note1"},
    {20, yes, yes, ValueType::text,     ValueKind::textBox,   95, 20,  2000, 25032, 25031, "",                "note2"},
    {21, yes, yes, ValueType::text,     ValueKind::textBox,    9, 21,  1000, 25046, 25045, "ColColumn1",      "column1"},
    {22, yes, yes, ValueType::text,     ValueKind::textBox,   10, 23,  1000, 25048, 25047, "ColColumn2",      "column2"},
    {23, yes, yes, ValueType::text,     ValueKind::textBox,   92, 24,  1500, 25034, 25033, "",                "group"},
    {24, no,  no,  ValueType::text,     ValueKind::textBox,   13, 25,     0, 25036, 25035, "",                "worktype"},
    {25, no,  no,  ValueType::status,   ValueKind::codeList,  99, 26,     0, 25038, 25037, "",                "status2"},
    {26, yes, yes, ValueType::text,     ValueKind::textBox,   -1, 22, 15000, 25006, 25005, "",                "name"},
}};
// clang-format on

constexpr std::string_view columnsFileName = "SearchColumns.dat";
constexpr std::string_view columnsSection = "ColumnVisible";
constexpr std::string_view gridSection = "OVGRID";

struct State {
    std::vector<SearchField> fields;
};

State& state() {
    thread_local State threadState;
    return threadState;
}

bool isFieldId(std::int32_t id) noexcept {
    return id >= 0 && id < searchFieldCount;
}

SearchField makeField(const FieldDefinition& definition) {
    SearchField field;
    field.Id = definition.id;
    field.Visible = definition.visible;
    field.Selectable = definition.selectable;
    field.Caption = GetSearchFieldCaption(definition.id, true);
    field.ShortCaption = GetSearchFieldCaption(definition.id, false);
    field.ValueType = definition.valueType;
    field.ValueKind = definition.valueKind;
    field.DictationField = definition.dictationField;
    field.Position = definition.position;
    field.Width = definition.width;
    return field;
}

// Ends at the first key that cannot be written.
void writeColumnSettings(const std::string& file) {
    for (const SearchField& field : state().fields)
        if (field.Selectable &&
            !modINI::WriteIniBoolean(columnsSection, std::to_string(field.Id), field.Visible, file))
            return;
}

void reportColumnsUnsaved(const Error& error) {
    reportUnsaved(columnsFileName, error, "SaveColumnSettings");
}
} // namespace

std::span<const FieldDefinition> fieldDefinitions() noexcept {
    return definitions;
}

const FieldDefinition& fieldDefinition(std::int32_t id) noexcept {
    return definitions[static_cast<std::size_t>(isFieldId(id) ? id : noField)];
}

std::int32_t fieldIdOfKey(std::string_view key) noexcept {
    for (const FieldDefinition& definition : definitions)
        if (!key.empty() && definition.key == key)
            return definition.id;
    const std::int32_t id = isAllDigits(key) ? leadingInt32(key) : -1;
    return isFieldId(id) ? id : -1;
}

std::int32_t sortField(std::int32_t id) noexcept {
    switch (id) {
    case 9:
        return 10;
    case 11:
        return 12;
    case 16:
        return 17;
    default:
        return id;
    }
}

void BuildSearchFieldTable() {
    std::vector<SearchField> fields;
    fields.reserve(definitions.size());
    for (const FieldDefinition& definition : definitions)
        fields.push_back(makeField(definition));
    const std::vector<SearchField>& old = state().fields;
    for (std::size_t i = 0; i < old.size(); ++i)
        fields[i].Visible = old[i].Visible;
    state().fields = std::move(fields);
}

std::span<SearchField> searchFields() {
    return state().fields;
}

std::string GetSearchFieldCaption(std::int32_t id, bool longForm) {
    if (!isFieldId(id))
        return "<?>";
    const FieldDefinition& definition = fieldDefinition(id);
    if (definition.captionText == 0)
        return "-";
    if (!definition.hostCaption.empty())
        if (std::string caption =
                modWFRoutines::WFGetValue(gridSection, definition.hostCaption, "");
            !caption.empty())
            return caption;
    return modLanguage::GetText(longForm ? definition.captionText : definition.shortCaptionText);
}

std::vector<const SearchField*> columnFields() {
    std::vector<const SearchField*> columns;
    for (const SearchField& field : searchFields())
        if (field.Visible)
            columns.push_back(&field);
    std::sort(columns.begin(), columns.end(),
              [](const SearchField* a, const SearchField* b) { return a->Position < b->Position; });
    return columns;
}

std::string columnSettingsFile() {
    const std::string directory = modFilePath::AddBackslash(
        modOVPlugIn::GetHostDirectory(modOVPlugIn::host_directory::settings));
    // A bare name would be looked up in the Windows directory.
    return directory.empty() ? directory : directory + std::string(columnsFileName);
}

void LoadColumnSettings() try {
    const std::string file = columnSettingsFile();
    if (file.empty())
        return;
    for (SearchField& field : searchFields())
        if (field.Selectable)
            field.Visible =
                modINI::ReadIniBoolean(columnsSection, std::to_string(field.Id), true, file);
} catch (const HostError& error) {
    WriteErrorLog(Error(error.number(), error.description()), "LoadColumnSettings");
}

void SaveColumnSettings() try {
    const std::string file = columnSettingsFile();
    if (!file.empty())
        writeColumnSettings(file);
    else
        reportColumnsUnsaved(
            Error(0, std::string(columnsFileName) + ": the host has no directory for it"));
} catch (const HostError& error) {
    reportColumnsUnsaved(Error(error.number(), error.description()));
}

void resetSearchFieldTable() {
    state() = {};
}

} // namespace ov::modDictation
