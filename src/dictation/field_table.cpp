// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "dictation/field_table.h"

#include "dictation/dictation_record.h"
#include "dictation/field_codes.h"
#include "plugin/host_error.h"
#include "plugin/modOVPlugIn.h"
#include "support/language/modLanguage.h"
#include "support/language/text_ids.h"
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

namespace d = dictation_field;
using T = ValueType;
using K = ValueKind;
using S = SortKind;
using X = ExportType;

constexpr std::int32_t any = noLengthLimit;
constexpr std::int32_t noCaption = 0;

constexpr std::array<std::int32_t, 4> statusCodes = {status_code::wav, status_code::roh,
                                                     status_code::stop, status_code::mai};
constexpr std::array<std::int32_t, 5> priorityCodes = {priority_code::normal,
                                                       priority_code::deadline, priority_code::high,
                                                       priority_code::edit, priority_code::message};
constexpr std::array<std::int32_t, 8> flagCodes = {10, 11, 12, 13, 14, 15, 16, 17};
constexpr std::span<const std::int32_t> none;

// The columns of serials hold the dates of others: they are visible but have no width. The name is
// as wide as a screen and stands before the last, rarely used ones.
// clang-format off
constexpr std::array<FieldDefinition, searchFieldCount> definitions = {{
    // id, visible, selectable, type, kind, dictation field, position, width, caption, host setting, key, length, codes, sort, sorted by, export
    {field_id::noField,        no,  no,  T::none,     K::none,     0,                  0,     0, text_id::noFieldCaption,    "",                "",            any, none,          S::text,   field_id::noField,        X::text},
    {field_id::folder,         yes, yes, T::text,     K::textBox,  d::directory,       1,  1400, text_id::folderCaption,     "",                "folder",      any, none,          S::text,   field_id::folder,         X::text},
    {field_id::status,         yes, yes, T::status,   K::codeList, d::status,          2,   280, text_id::statusCaption,     "",                "status",      any, statusCodes,   S::number, field_id::status,         X::text},
    {field_id::marker,         yes, yes, T::marker,   K::none,     d::marker,          3,   280, text_id::markerCaption,     "",                "marker",        6, none,          S::text,   field_id::marker,         X::text},
    {field_id::authorCode,     yes, yes, T::text,     K::textBox,  d::authorCode,      4,   700, text_id::authorCodeCaption, "",                "author-code", 256, none,          S::text,   field_id::authorCode,     X::text},
    {field_id::author,         yes, yes, T::text,     K::textBox,  d::author,          5,  1000, text_id::authorCaption,     "",                "author",       25, none,          S::text,   field_id::author,         X::text},
    {field_id::typist,         yes, yes, T::text,     K::textBox,  d::typist,          6,  1100, text_id::typistCaption,     "",                "typist",      256, none,          S::text,   field_id::typist,         X::text},
    {field_id::flags,          yes, yes, T::flag,     K::codeList, d::flags,           7,  1500, text_id::flagsCaption,      "",                "flags",       any, flagCodes,     S::number, field_id::flags,          X::text},
    {field_id::number,         yes, yes, T::text,     K::textBox,  d::number,          8,   600, text_id::numberCaption,     "",                "number",        9, none,          S::text,   field_id::number,         X::number},
    {field_id::dictated,       yes, yes, T::date,     K::date,     d::dictated,        9,  1800, text_id::dictatedCaption,   "",                "dictated",    any, none,          S::number, field_id::dictatedSerial, X::date},
    {field_id::dictatedSerial, yes, no,  T::number,   K::none,     d::dictatedSerial, 10,     0, noCaption,                  "",                "",            any, none,          S::number, field_id::dictatedSerial, X::text},
    {field_id::changed,        yes, yes, T::date,     K::date,     d::changed,        11,  1800, text_id::changedCaption,    "",                "changed",     any, none,          S::number, field_id::changedSerial,  X::date},
    {field_id::changedSerial,  yes, no,  T::number,   K::none,     d::changedSerial,  12,     0, noCaption,                  "",                "",            any, none,          S::number, field_id::changedSerial,  X::text},
    {field_id::length,         yes, yes, T::time,     K::time,     d::length,         13,  1000, text_id::lengthCaption,     "",                "length",      any, none,          S::number, field_id::length,         X::length},
    {field_id::file,           yes, yes, T::text,     K::textBox,  d::file,           14,  1000, text_id::fileCaption,       "ColFiles",        "file",         19, none,          S::text,   field_id::file,           X::text},
    {field_id::priority,       yes, yes, T::priority, K::codeList, d::priority,       15,   280, text_id::priorityCaption,   "",                "priority",    any, priorityCodes, S::number, field_id::priority,       X::text},
    {field_id::due,            yes, yes, T::date,     K::date,     d::due,            16,  1100, text_id::dueCaption,        "ColScheduleTime", "due",         any, none,          S::number, field_id::dueSerial,      X::date},
    {field_id::dueSerial,      yes, no,  T::number,   K::none,     d::dueSerial,      17,     0, noCaption,                  "",                "",            any, none,          S::number, field_id::dueSerial,      X::text},
    {field_id::subject,        yes, yes, T::text,     K::textBox,  d::subject,        18,  2000, text_id::subjectCaption,    "",                "subject",      55, none,          S::text,   field_id::subject,        X::text},
    {field_id::note1,          yes, yes, T::text,     K::textBox,  d::note1,          19,  2000, text_id::note1Caption,      "",                "note1",        64, none,          S::text,   field_id::note1,          X::text},
    {field_id::note2,          yes, yes, T::text,     K::textBox,  d::note2,          20,  2000, text_id::note2Caption,      "",                "note2",        64, none,          S::text,   field_id::note2,          X::text},
    {field_id::column1,        yes, yes, T::text,     K::textBox,  d::column1,        21,  1000, text_id::column1Caption,    "ColColumn1",      "column1",      14, none,          S::text,   field_id::column1,        X::text},
    {field_id::column2,        yes, yes, T::text,     K::textBox,  d::column2,        23,  1000, text_id::column2Caption,    "ColColumn2",      "column2",      15, none,          S::text,   field_id::column2,        X::text},
    {field_id::group,          yes, yes, T::text,     K::textBox,  d::group,          24,  1500, text_id::groupCaption,      "",                "group",        20, none,          S::text,   field_id::group,          X::text},
    {field_id::worktype,       no,  no,  T::text,     K::textBox,  d::worktype,       25,     0, text_id::worktypeCaption,   "",                "worktype",    any, none,          S::text,   field_id::worktype,       X::text},
    {field_id::status2,        no,  no,  T::status,   K::codeList, d::secondStatus,   26,     0, text_id::status2Caption,    "",                "status2",       8, none,          S::number, field_id::status2,        X::text},
    {field_id::name,           yes, yes, T::text,     K::textBox,  d::wholeName,      22, 15000, text_id::nameCaption,       "",                "name",        256, none,          S::text,   field_id::name,           X::text},
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

// Empty where the host has no caption of its own.
std::string hostCaption(const FieldDefinition& definition) {
    return definition.hostCaption.empty()
               ? std::string()
               : modWFRoutines::WFGetValue(gridSection, definition.hostCaption, "");
}

std::string captionOf(const FieldDefinition& definition, const std::string& ofHost, bool longForm) {
    if (definition.captionText == noCaption)
        return "-";
    if (!ofHost.empty())
        return ofHost;
    return modLanguage::GetText(longForm ? definition.captionText
                                         : text_id::shortCaption(definition.captionText));
}

SearchField makeField(const FieldDefinition& definition) {
    const std::string ofHost = hostCaption(definition);
    SearchField field;
    field.Id = definition.id;
    field.Visible = definition.visible;
    field.Selectable = definition.selectable;
    field.Caption = captionOf(definition, ofHost, true);
    field.ShortCaption = captionOf(definition, ofHost, false);
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
    return captionOf(definition, hostCaption(definition), longForm);
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
    std::vector<std::string> keys;
    for (const SearchField& field : searchFields())
        keys.push_back(std::to_string(field.Id));
    const std::vector<bool> visible = modINI::ReadIniBooleans(columnsSection, keys, true, file);
    for (std::size_t i = 0; i < visible.size(); ++i)
        if (SearchField& field = searchFields()[i]; field.Selectable)
            field.Visible = visible[i];
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
