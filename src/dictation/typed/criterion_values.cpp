// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "dictation/typed/criterion_values.h"

#include "dictation/field_codes.h"
#include "dictation/field_date.h"
#include "platform/locale.h"
#include "platform/text.h"
#include "support/numbers.h"

#include <algorithm>
#include <span>

namespace ov::modDictation {

namespace {

// The second status has no list of its own in the editor; it takes the same codes.
std::span<const std::int32_t> codesOf(const FieldDefinition& field) {
    const bool isStatus = field.valueType == ValueType::status;
    return isStatus ? fieldDefinition(field_id::status).offeredCodes : field.offeredCodes;
}

std::string codeList(const FieldDefinition& field) {
    std::string list;
    for (const std::int32_t code : codesOf(field)) {
        const std::string_view word = codeWord(code);
        list += list.empty() ? "" : ", ";
        list += std::to_string(code);
        if (!word.empty())
            list.append(" ").append(word);
        list.append(" (").append(GetStatusText(code)).append(")");
    }
    return list;
}

std::optional<std::string> codeValue(const FieldDefinition& field, std::string_view text) {
    for (const std::int32_t code : codesOf(field)) {
        const bool same = text == std::to_string(code) ||
                          platform::equalsIgnoringCase(text, codeWord(code)) ||
                          platform::equalsIgnoringCase(text, GetStatusText(code));
        if (same)
            return std::to_string(code);
    }
    return std::nullopt;
}

std::optional<std::string> dateValue(std::string_view text) {
    const auto date = platform::parseDate(text);
    return date ? std::optional(platform::formatIsoDate(*date)) : std::nullopt;
}

std::optional<std::string> timeValue(std::string_view text) {
    const auto seconds = readSeconds(text);
    return seconds ? std::optional(secondsText(*seconds)) : std::nullopt;
}

std::optional<std::string> numberValue(std::string_view text) {
    const auto number = platform::parseNumber(text);
    return number ? std::optional(std::to_string(roundToInt32(*number))) : std::nullopt;
}

std::optional<std::string> textValue(std::string_view text) {
    // No name can hold one, and a file of criteria neither.
    if (std::ranges::any_of(text, [](char c) { return (c >= 0 && c < ' ') || c == '\x7F'; }))
        return std::nullopt;
    return std::string(text);
}

} // namespace

bool hasCodes(ValueType type) noexcept {
    return type == ValueType::code || type == ValueType::status || type == ValueType::priority ||
           type == ValueType::flag;
}

std::optional<std::string> storedValue(const FieldDefinition& field, std::string_view text) {
    if (hasCodes(field.valueType))
        return codeValue(field, text);
    switch (field.valueType) {
    case ValueType::date:
        return dateValue(text);
    case ValueType::time:
        return timeValue(text);
    case ValueType::number:
        return numberValue(text);
    default:
        return textValue(text);
    }
}

std::string expectedValue(const FieldDefinition& field) {
    if (hasCodes(field.valueType))
        return "one of " + codeList(field);
    switch (field.valueType) {
    case ValueType::date:
        return "a date such as 2026-11-21 or " + platform::formatShortDate({2026, 11, 21});
    case ValueType::time:
        return "a time such as 00:05:00";
    case ValueType::number:
        return "a number";
    default:
        return "a text without control characters";
    }
}

std::string missingValue(const FieldDefinition& field, const std::string& expected) {
    const bool isText = field.valueType == ValueType::text;
    return "a value is missing: " + (isText ? "a text" : expected);
}

std::optional<std::string> codeOfLetters(const FieldDefinition& field, std::string_view text) {
    constexpr std::size_t fewest = 2;
    if (const auto whole = codeValue(field, text))
        return whole;
    std::optional<std::string> only;
    const std::string start = platform::upperCase(text);
    for (const std::int32_t code : codesOf(field)) {
        const bool begins =
            start.size() >= fewest && (codeWord(code).starts_with(start) ||
                                       platform::upperCase(GetStatusText(code)).starts_with(start));
        if (begins && only)
            return std::nullopt;
        if (begins)
            only = std::to_string(code);
    }
    return only;
}

bool isReversed(ValueType type, std::string_view first, std::string_view second) {
    if (type == ValueType::time)
        return readSeconds(second) < readSeconds(first);
    if (type == ValueType::number)
        return leadingInt32(second) < leadingInt32(first);
    return type == ValueType::date && second < first; // ISO
}

} // namespace ov::modDictation
