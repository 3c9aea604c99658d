// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

// The search fields: each is a column of the result list and, when selectable, something that a
// criterion can test. One table serves the editors, the columns, matching, export and the
// terminal.

namespace ov::modDictation {

// What a field's values are: chooses operators, matching and display. Numbers are the table's.
enum class ValueType : std::int32_t {
    none = 0,
    text = 1,
    date = 2,
    time = 3,
    number = 4,
    code = 5,
    status = 6,
    priority = 7,
    marker = 8,
    flag = 9,
};

// The control that a value is entered with.
enum class ValueKind : std::int32_t { none = 0, textBox = 1, codeList = 2, date = 3, time = 4 };

constexpr std::int32_t searchFieldCount = 27; // ids 0 to 26
constexpr std::int32_t noField = 0;

// What is fixed about a field.
struct FieldDefinition {
    std::int32_t id = 0;
    bool visible = false;    // unless the user chose otherwise
    bool selectable = false; // may be tested by a criterion and chosen as a column
    ValueType valueType = ValueType::none;
    ValueKind valueKind = ValueKind::none;
    std::int32_t dictationField = 0; // as GetDictationField takes it
    std::int32_t position = 0;       // of the column, 1 to 26
    std::int32_t width = 0;          // of the column, twips (1/1440 inch); 0: hidden
    std::int32_t captionText = 0;    // text number of the long caption; 0: "-"
    std::int32_t shortCaptionText = 0;
    std::string_view hostCaption; // the host's setting that replaces both captions
    std::string_view key;         // name in the terminal; empty for auxiliary columns
};

// All definitions, by id.
std::span<const FieldDefinition> fieldDefinitions() noexcept;
// That of an id; of field 0 for an id outside the table.
const FieldDefinition& fieldDefinition(std::int32_t id) noexcept;
// The id of a terminal key ("author") or of a number in the table; -1 for any other text.
std::int32_t fieldIdOfKey(std::string_view key) noexcept;

// The hidden column that holds a date column's dates as serials, which sort as they should; the
// field itself for any other.
std::int32_t sortField(std::int32_t id) noexcept;

// A field as the program works with it: its definition with captions in the user's language and
// the user's choice of columns.
struct SearchField {
    std::int32_t Id = 0;
    bool Visible = false;
    bool Selectable = false;
    std::string Caption;
    std::string ShortCaption;
    modDictation::ValueType ValueType = modDictation::ValueType::none;
    modDictation::ValueKind ValueKind = modDictation::ValueKind::none;
    std::int32_t DictationField = 0;
    std::int32_t Position = 0;
    std::int32_t Width = 0;
    std::int32_t Reserved = 0;
};

// Makes this thread's list of the 27 fields. Call it again after a change of language: captions
// are made anew, the user's choice of columns is kept.
void BuildSearchFieldTable();

// The list; empty until it is built. Visible flags may be changed by the column chooser.
std::span<SearchField> searchFields();

// "<?>" for an id outside the table.
std::string GetSearchFieldCaption(std::int32_t id, bool longForm);

// Reads and writes the Visible flags of the selectable fields in "SearchColumns.dat", in the
// host's directory 32. Errors are logged; reading then leaves the table as it is.
void LoadColumnSettings();
void SaveColumnSettings();

// The path of that file; empty when the host has no such directory.
std::string columnSettingsFile();

// The visible fields by ascending position, hidden auxiliary ones (width 0) included: the columns
// of the result list. Valid until the table is built anew.
std::vector<const SearchField*> columnFields();

// For tests: forgets the list.
void resetSearchFieldTable();

} // namespace ov::modDictation
