// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

// A dictation as its file name tells it.
//
// Grammar of a name, without its ".WAV" ending:
//   name   = "2$" value *( "@@" number "$" value )
//   number = decimal, no leading zeros
//   value  = any characters up to the next "@@", escaped as name_decoding.h says
// A reader trusts none of it: a field is what stands behind the first occurrence of its tag.

namespace ov::modDictation {

// Numbers of the fields in the name.
namespace dictation_field {
constexpr std::int32_t status = 2;
constexpr std::int32_t authorCode = 3;
constexpr std::int32_t due = 4;
constexpr std::int32_t priority = 5;
constexpr std::int32_t length = 6;
constexpr std::int32_t dictated = 7;
constexpr std::int32_t file = 8;
constexpr std::int32_t column1 = 9;
constexpr std::int32_t column2 = 10;
constexpr std::int32_t subject = 11;
constexpr std::int32_t number = 12;
constexpr std::int32_t worktype = 13;
constexpr std::int32_t author = 14;
constexpr std::int32_t typist = 16;
constexpr std::int32_t flags = 17;
constexpr std::int32_t changed = 20;
constexpr std::int32_t freeText = 23; // the one with the second escape scheme
constexpr std::int32_t note1 = 91;
constexpr std::int32_t group = 92;
constexpr std::int32_t note2 = 95;
constexpr std::int32_t marker = 98;
constexpr std::int32_t secondStatus = 99;
// Derived ones.
constexpr std::int32_t wholeName = -1;
constexpr std::int32_t directory = -2;
constexpr std::int32_t dictatedSerial = -3;
constexpr std::int32_t dueSerial = -4;
constexpr std::int32_t changedSerial = -5;
} // namespace dictation_field

// Reads one field of a dictation into `value`, which is cleared first and whose memory is used
// again. `path` is the dictation's directory, `name` its dictationName().
// False when the name has no such field; the derived ones (negative) are always there. A date
// serial of a field that holds no date is empty.
bool GetDictationField(std::int32_t fieldNumber, std::string_view path, std::string_view name,
                       std::string& value);

// The same for a field that is read from many names.
class FieldReader {
public:
    explicit FieldReader(std::int32_t fieldNumber) noexcept;

    std::int32_t fieldNumber() const noexcept { return fieldNumber_; }
    std::string_view tag() const noexcept { return {tag_.data(), tagSize_}; }
    bool read(std::string_view path, std::string_view name, std::string& value) const;

private:
    std::int32_t fieldNumber_;
    std::array<char, 16> tag_{}; // the longest is "@@-2147483648$"
    std::size_t tagSize_ = 0;
};

// The tag that a field starts with: "2$", or "@@17$".
std::string fieldTag(std::int32_t fieldNumber);

// Where in `name` the field's value stands, still escaped. `tag` is the field's fieldTag().
std::optional<std::string_view> findFieldValue(std::string_view name,
                                               std::string_view tag) noexcept;

// "...\Ward3", or "...\Ward3\ERL" when the last part is ERL, of a directory with or without its
// final "\"; what is no UTF-8 is read as Windows-1252. The whole of a path without any "\".
std::string GetDirectoryText(std::string_view path);
void appendDirectoryText(std::string_view path, std::string& out);

// True for a file name that ends in ".WAV", in any letter case.
bool hasDictationEnding(std::string_view fileName) noexcept;
// Of such a file name.
std::string_view withoutEnding(std::string_view fileName) noexcept;

// The dictation's name as every field reader takes it: the file name without ".WAV", as UTF-8;
// a name that is no UTF-8 is read as Windows-1252. `buffer` holds the text when it had to be
// converted.
std::string_view dictationName(std::string_view fileName, std::string& buffer);

} // namespace ov::modDictation
