// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "dictation/dictation_record.h"

#include "dictation/field_date.h"
#include "dictation/name_decoding.h"
#include "platform/text.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace ov::modDictation {

namespace {

constexpr std::string_view separator = "@@";
constexpr std::string_view ending = ".WAV";
constexpr std::string_view finishedFolder = "ERL";
constexpr std::size_t longestTag = 16; // "@@-2147483648$" and a spare

using TagBuffer = std::array<char, longestTag>;

std::string_view writeTag(std::int32_t fieldNumber, TagBuffer& buffer) noexcept {
    char* at = buffer.data();
    if (fieldNumber != dictation_field::status)
        at = std::copy(separator.begin(), separator.end(), at);
    at = std::to_chars(at, buffer.data() + buffer.size() - 1, fieldNumber).ptr;
    *at++ = '$';
    return {buffer.data(), static_cast<std::size_t>(at - buffer.data())};
}

// True when one of `blockSize` places from `at` on begins with the first four bytes of the tag.
// Written without a way out of the loop, so that the compiler compares all places at once.
constexpr std::size_t blockSize = 32;
bool blockHasTag(const char* at, std::string_view tag) noexcept {
    const char third = tag[2];
    const char fourth = tag[3];
    unsigned char found = 0;
    for (std::size_t i = 0; i < blockSize; ++i) {
        const bool here =
            (at[i] == '@') & (at[i + 1] == '@') & (at[i + 2] == third) & (at[i + 3] == fourth);
        found |= static_cast<unsigned char>(here);
    }
    return found != 0;
}

// The first occurrence of a tag that begins with a separator. string_view::find stops at every
// "@" of a name that is full of them; looking at whole blocks is several times quicker.
std::size_t findTag(std::string_view name, std::string_view tag) noexcept {
    constexpr std::size_t looksAhead = 3;
    std::size_t at = 0;
    for (; at + blockSize + looksAhead <= name.size(); at += blockSize) {
        if (!blockHasTag(name.data() + at, tag))
            continue;
        // The tag may begin in the block and end behind it.
        for (std::size_t i = at; i < at + blockSize; ++i)
            if (name[i] == '@' && name.substr(i, tag.size()) == tag)
                return i;
    }
    return name.find(tag, at);
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

} // namespace

std::string fieldTag(std::int32_t fieldNumber) {
    TagBuffer buffer{};
    return std::string(writeTag(fieldNumber, buffer));
}

std::optional<std::string_view> findFieldValue(std::string_view name,
                                               std::string_view tag) noexcept {
    // Only the status stands without a separator, and only at the very start.
    if (!tag.starts_with(separator)) {
        if (!name.starts_with(tag))
            return std::nullopt;
        const std::string_view value = name.substr(tag.size());
        return value.substr(0, value.find(separator));
    }
    const std::size_t at = findTag(name, tag);
    if (at == std::string_view::npos)
        return std::nullopt;
    const std::string_view value = name.substr(at + tag.size());
    return value.substr(0, value.find(separator));
}

bool GetDictationField(std::int32_t fieldNumber, std::string_view path, std::string_view name,
                       std::string& value) {
    value.clear();
    if (const std::int32_t field = fieldBehindSerial(fieldNumber); field != 0) {
        readSerial(field, path, name, value);
        return true;
    }
    if (fieldNumber == dictation_field::directory) {
        appendDirectoryText(path, value);
        return true;
    }
    if (fieldNumber == dictation_field::wholeName) {
        appendDecodedFieldText(name, value);
        return true;
    }
    TagBuffer tag{};
    const auto raw = findFieldValue(name, writeTag(fieldNumber, tag));
    if (!raw)
        return false;
    if (fieldNumber == dictation_field::freeText)
        appendDecodedFieldText2(*raw, value);
    else
        appendDecodedFieldText(*raw, value);
    return true;
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
