// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "dictation/field_values.h"

#include "dictation/dictation_record.h"
#include "dictation/field_codes.h"
#include "dictation/field_date.h"
#include "dictation/field_table.h"
#include "platform/locale.h"
#include "support/numbers.h"

#include <charconv>
#include <utility>

namespace ov::modDictation {

namespace {

std::string dateText(std::string value) {
    const auto serial = readDateOrSerial(value);
    if (!serial)
        return value;
    const platform::DateTime date = dateOf(*serial);
    std::string text = platform::formatShortDate(date);
    if (serial->hasTime)
        text += ' ' + platform::formatLongTime(date);
    return text;
}

std::string timeText(std::string value) {
    const auto seconds = readSeconds(value);
    if (!seconds)
        return value;
    return secondsText(*seconds);
}

// Without `codes` in the language of the thread.
std::string textOf(std::int32_t code, const CodeTexts* codes) {
    return codes != nullptr ? codes->of(code) : GetStatusText(code);
}

// Sums of several flags mostly have no text of their own; then each set flag is named.
std::string flagsText(std::string value, const CodeTexts* codes) {
    const std::int32_t code = GetFieldCode(dictation_field::flags, value);
    const auto bits = static_cast<std::uint32_t>(leadingInt32(value));
    if (bits == 0 && isAllDigits(value))
        return {};
    if (code == noCode)
        return value;
    if (std::string text = textOf(code, codes); !text.empty())
        return text;
    std::string names;
    for (std::int32_t flag = firstFlagCode; flag <= lastFlagCode; ++flag)
        if ((bits >> static_cast<unsigned>(flag - firstFlagCode) & 1U) != 0)
            names.append(names.empty() ? "" : ", ").append(textOf(flag, codes));
    return names;
}

std::string codeText(std::int32_t dictationField, std::string value, const CodeTexts* codes) {
    const std::int32_t code = GetFieldCode(dictationField, value);
    if (code == noCode)
        return value;
    return textOf(code, codes);
}

std::string shown(std::int32_t field, const Dictation& dictation, const CodeTexts* codes) {
    const FieldDefinition& definition = fieldDefinition(field);
    std::string value;
    readField(definition.dictationField, dictation, value);
    switch (definition.valueType) {
    case ValueType::date:
        return dateText(std::move(value));
    case ValueType::time:
        return timeText(std::move(value));
    case ValueType::status:
    case ValueType::priority:
        return codeText(definition.dictationField, std::move(value), codes);
    case ValueType::flag:
        return flagsText(std::move(value), codes);
    case ValueType::none:
        return {};
    default:
        return value;
    }
}

double dateNumber(std::string_view value) {
    const auto serial = readDateOrSerial(value);
    return serial ? daysOf(*serial) : noNumber;
}

std::optional<TypedValue> exactNumber(std::string_view text) {
    constexpr std::size_t exactDigits = 15; // of the numbers of spreadsheets and of JSON readers
    std::int64_t number = 0;
    const auto read = std::from_chars(text.data(), text.data() + text.size(), number);
    if (read.ec != std::errc() || text.size() > exactDigits || std::to_string(number) != text)
        return std::nullopt;
    return number;
}

} // namespace

CodeTexts::CodeTexts() {
    std::int32_t allFlags = 0;
    for (std::int32_t flag = firstFlagCode; flag <= lastFlagCode; ++flag)
        allFlags += flag;
    for (std::int32_t code = 0; code <= allFlags; ++code)
        texts_.push_back(GetStatusText(code));
}

const std::string& CodeTexts::of(std::int32_t code) const noexcept {
    static const std::string none;
    const auto place = static_cast<std::size_t>(code);
    return code >= 0 && place < texts_.size() ? texts_[place] : none;
}

std::string shownValue(std::int32_t field, const Dictation& dictation) {
    return shown(field, dictation, nullptr);
}

std::string shownValue(std::int32_t field, const Dictation& dictation, const CodeTexts& codes) {
    return shown(field, dictation, &codes);
}

bool isAssumed(std::int32_t field, const Dictation& dictation) {
    const std::int32_t dictationField = fieldDefinition(field).dictationField;
    if (assumedCode(dictationField) == noCode)
        return false;
    std::string value;
    readField(dictationField, dictation, value);
    return value.empty();
}

bool sortsByNumber(std::int32_t field) noexcept {
    return fieldDefinition(field).sortKind == SortKind::number;
}

double sortNumber(std::int32_t field, const Dictation& dictation) {
    const FieldDefinition& definition = fieldDefinition(field);
    std::string value;
    readField(definition.dictationField, dictation, value);
    switch (definition.valueType) {
    case ValueType::date:
        return dateNumber(value);
    case ValueType::time: {
        const auto seconds = readSeconds(value);
        return seconds ? *seconds : noNumber;
    }
    case ValueType::number:
        return value.empty() ? noNumber : leadingNumber(value);
    case ValueType::code:
        return leadingInt32(value);
    case ValueType::status:
    case ValueType::priority:
    case ValueType::flag:
        return GetFieldCode(definition.dictationField, value);
    default:
        return noNumber;
    }
}

std::optional<TypedValue> typedValue(std::int32_t field, const Dictation& dictation) {
    const FieldDefinition& definition = fieldDefinition(field);
    std::string value;
    readField(definition.dictationField, dictation, value);
    switch (definition.exportType) {
    case ExportType::date:
        return readDateOrSerial(value);
    case ExportType::length: {
        const auto seconds = readSeconds(value);
        return seconds ? std::optional<TypedValue>(Seconds{*seconds}) : std::nullopt;
    }
    case ExportType::number:
        return exactNumber(value);
    case ExportType::text:
        break;
    }
    return std::nullopt;
}

} // namespace ov::modDictation
