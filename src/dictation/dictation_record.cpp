// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "dictation/dictation_record.h"

#include "dictation/field_date.h"
#include "dictation/name_decoding.h"
#include "platform/text.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>

namespace ov::modDictation {

namespace {

constexpr std::string_view separator = "@@";
constexpr std::string_view ending = ".WAV";
constexpr std::string_view finishedFolder = "ERL";
// For each place from `at` on whether the tag may begin there: whether its second to fourth bytes
// fit. Written without a way out of the loop, so that the compiler compares all places at once.
constexpr std::size_t blockSize = 32;
constexpr char fits = 1;
using Places = std::array<char, blockSize>;
Places placesOfTag(const char* at, std::string_view tag) noexcept {
    const char third = tag[2];
    const char fourth = tag[3];
    Places places; // NOLINT(cppcoreguidelines-pro-type-member-init): filled here
    for (std::size_t i = 0; i < blockSize; ++i)
        places[i] = static_cast<char>((at[i + 1] == separator[1]) & (at[i + 2] == third) &
                                      (at[i + 3] == fourth));
    return places;
}

// The first that begins in the block from `at` on; it may end behind it.
std::size_t findTagInBlock(std::string_view name, std::size_t at, std::string_view tag) noexcept {
    const Places places = placesOfTag(name.data() + at, tag);
    const auto words = std::bit_cast<std::array<std::uint64_t, blockSize / 8>>(places);
    if ((words[0] | words[1] | words[2] | words[3]) == 0)
        return std::string_view::npos;
    const std::string_view all(places.data(), places.size());
    for (std::size_t i = all.find(fits); i != std::string_view::npos; i = all.find(fits, i + 1))
        if (name.substr(at + i, tag.size()) == tag)
            return at + i;
    return std::string_view::npos;
}

// The first occurrence of a tag that begins with a separator. string_view::find stops at every
// "@" of a name that is full of them; looking at whole blocks is several times quicker.
std::size_t findTag(std::string_view name, std::string_view tag) noexcept {
    constexpr std::size_t looksAhead = 3;
    if (name.size() < blockSize + looksAhead)
        return name.find(tag);
    const std::size_t last = name.size() - blockSize - looksAhead;
    for (std::size_t at = 0;; at = std::min(at + blockSize, last)) {
        const std::size_t found = findTagInBlock(name, at, tag);
        if (found != std::string_view::npos || at == last)
            return found;
    }
}

// What stands before the next separator. One of its two characters is at an odd place.
std::string_view valueAt(std::string_view behindTag) noexcept {
    for (std::size_t i = 1; i < behindTag.size(); i += 2) {
        if (behindTag[i] != separator[0])
            continue;
        if (behindTag[i - 1] == separator[0])
            return behindTag.substr(0, i - 1);
        if (i + 1 < behindTag.size() && behindTag[i + 1] == separator[0])
            return behindTag.substr(0, i);
    }
    return behindTag;
}

std::int32_t fieldBehindSerial(std::int32_t pseudoField) noexcept {
    switch (pseudoField) {
    case dictation_field::dictatedSerial:
        return dictation_field::dictated;
    case dictation_field::dueSerial:
        return dictation_field::due;
    case dictation_field::changedSerial:
        return dictation_field::changed;
    default:
        return 0;
    }
}

// For `capitals` that are the capitals of no other characters than their own small letters, which
// differ from them in one bit.
bool isInAnyCase(std::string_view text, std::string_view capitals) noexcept {
    return std::equal(text.begin(), text.end(), capitals.begin(), capitals.end(),
                      [](char c, char capital) { return c == capital || (c & ~0x20) == capital; });
}

void readSerial(std::int32_t field, std::string_view path, std::string_view name,
                std::string& value) {
    GetDictationField(field, path, name, value);
    const auto date = ReadFieldDate(platform::trimmed(value, ' '), false);
    value.clear();
    if (date)
        appendSerialText(*date, value);
}

// False for a field that is none of these.
bool readDerived(std::int32_t fieldNumber, std::string_view path, std::string_view name,
                 std::string& value) {
    if (const std::int32_t field = fieldBehindSerial(fieldNumber); field != 0)
        readSerial(field, path, name, value);
    else if (fieldNumber == dictation_field::directory)
        appendDirectoryText(path, value);
    else if (fieldNumber == dictation_field::wholeName)
        appendDecodedFieldText(name, value);
    else
        return false;
    return true;
}

} // namespace

std::string fieldTag(std::int32_t fieldNumber) {
    return std::string(FieldReader(fieldNumber).tag());
}

std::optional<std::string_view> findFieldValue(std::string_view name,
                                               std::string_view tag) noexcept {
    // Only the status stands without a separator, and only at the very start.
    const std::size_t at = tag.starts_with(separator) ? findTag(name, tag)
                           : name.starts_with(tag)    ? 0
                                                      : std::string_view::npos;
    if (at == std::string_view::npos)
        return std::nullopt;
    return valueAt(name.substr(at + tag.size()));
}

FieldReader::FieldReader(std::int32_t fieldNumber) noexcept : fieldNumber_(fieldNumber) {
    char* at = tag_.data();
    if (fieldNumber != dictation_field::status)
        at = std::copy(separator.begin(), separator.end(), at);
    at = std::to_chars(at, tag_.data() + tag_.size() - 1, fieldNumber).ptr;
    *at++ = '$';
    tagSize_ = static_cast<std::size_t>(at - tag_.data());
}

bool FieldReader::read(std::string_view path, std::string_view name, std::string& value) const {
    value.clear();
    if (fieldNumber_ < 0 && readDerived(fieldNumber_, path, name, value))
        return true;
    const auto raw = findFieldValue(name, tag());
    if (!raw)
        return false;
    if (fieldNumber_ == dictation_field::freeText)
        appendDecodedFieldText2(*raw, value);
    else
        appendDecodedFieldText(*raw, value);
    return true;
}

bool GetDictationField(std::int32_t fieldNumber, std::string_view path, std::string_view name,
                       std::string& value) {
    return FieldReader(fieldNumber).read(path, name, value);
}

void appendDirectoryText(std::string_view path, std::string& out) {
    if (path.ends_with('\\'))
        path.remove_suffix(1);
    std::size_t at = path.rfind('\\');
    if (at == std::string_view::npos) {
        platform::appendTextFromBytes(path, out);
        return;
    }
    // Finished dictations lie in "ERL" below every ward: the ward's name must be seen as well.
    if (at > 0 && isInAnyCase(path.substr(at + 1), finishedFolder))
        if (const std::size_t above = path.rfind('\\', at - 1); above != std::string_view::npos)
            at = above;
    out.append("...");
    platform::appendTextFromBytes(path.substr(at), out);
}

std::string GetDirectoryText(std::string_view path) {
    std::string text;
    appendDirectoryText(path, text);
    return text;
}

bool hasDictationEnding(std::string_view fileName) noexcept {
    return fileName.size() >= ending.size() &&
           isInAnyCase(fileName.substr(fileName.size() - ending.size()), ending);
}

std::string_view withoutEnding(std::string_view fileName) noexcept {
    return fileName.substr(0, fileName.size() - ending.size());
}

std::string_view dictationName(std::string_view fileName, std::string& buffer) {
    if (hasDictationEnding(fileName))
        fileName = withoutEnding(fileName);
    if (platform::isValidUtf8(fileName))
        return fileName;
    buffer.clear();
    platform::appendWindows1252(fileName, buffer);
    return buffer;
}

} // namespace ov::modDictation
