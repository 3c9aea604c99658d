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

// Stored in criteria files and settings: never renumber.
namespace field_id {
constexpr std::int32_t noField = 0;
constexpr std::int32_t folder = 1;
constexpr std::int32_t status = 2;
constexpr std::int32_t marker = 3;
constexpr std::int32_t authorCode = 4;
constexpr std::int32_t author = 5;
constexpr std::int32_t typist = 6;
constexpr std::int32_t flags = 7;
constexpr std::int32_t number = 8;
constexpr std::int32_t dictated = 9;
constexpr std::int32_t dictatedSerial = 10; // auxiliary: the dates of the one before as serials
constexpr std::int32_t changed = 11;
constexpr std::int32_t changedSerial = 12;
constexpr std::int32_t length = 13;
constexpr std::int32_t file = 14;
constexpr std::int32_t priority = 15;
constexpr std::int32_t due = 16;
constexpr std::int32_t dueSerial = 17;
constexpr std::int32_t subject = 18;
constexpr std::int32_t note1 = 19;
constexpr std::int32_t note2 = 20;
constexpr std::int32_t column1 = 21;
constexpr std::int32_t column2 = 22;
constexpr std::int32_t group = 23;
constexpr std::int32_t worktype = 24;
constexpr std::int32_t status2 = 25;
constexpr std::int32_t name = 26;
} // namespace field_id

constexpr std::int32_t searchFieldCount = 27; // ids 0 to 26
constexpr std::int32_t noField = field_id::noField;

// By what a list sorts: the shown text, or the number that it stands for.
enum class SortKind : std::uint8_t { text, number };

// What a value is in forms that know more than text.
enum class ExportType : std::uint8_t { text, date, length, number };

constexpr std::int32_t noLengthLimit = 32767; // what an entry field takes anyway

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
    std::string_view hostCaption;    // the host's setting that replaces both captions
    std::string_view key;            // name in the terminal; empty for auxiliary columns
    std::int32_t greatestLength = noLengthLimit; // characters that the host's own forms take
    std::span<const std::int32_t> offeredCodes;  // of a code list, in their order
    SortKind sortKind = SortKind::text;
    std::int32_t sortField = noField; // the column that this one is sorted by, mostly itself
    ExportType exportType = ExportType::text;
};

// All definitions, by id.
std::span<const FieldDefinition> fieldDefinitions() noexcept;
// That of an id; of field 0 for an id outside the table.
const FieldDefinition& fieldDefinition(std::int32_t id) noexcept;
// The id of a terminal key ("author") or of a number in the table; -1 for any other text.
std::int32_t fieldIdOfKey(std::string_view key) noexcept;

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
