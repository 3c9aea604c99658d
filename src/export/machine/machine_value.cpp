// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "export/machine/machine_value.h"

#include "dictation/field_codes.h"
#include "dictation/field_table.h"
#include "dictation/field_values.h"
#include "export/machine/base64.h"
#include "platform/files.h"
#include "platform/text.h"
#include "support/numbers.h"

#include <array>
#include <cstdio>
#include <optional>
#include <utility>

namespace ov::exporting {

namespace {

using modDictation::ExportType;
using modDictation::FieldDefinition;
using modDictation::ValueType;

MachineValue valueOf(const modDictation::DateSerial& serial) {
    const platform::DateTime date = modDictation::dateOf(serial);
    std::array<char, 64> text{};
    const int dayLength =
        std::snprintf(text.data(), text.size(), "%04d-%02d-%02d", date.year, date.month, date.day);
    std::string iso(text.data(), static_cast<std::size_t>(dayLength));
    if (serial.hasTime) {
        const int timeLength = std::snprintf(text.data(), text.size(), "T%02d:%02d:%02d", date.hour,
                                             date.minute, date.second);
        iso.append(text.data(), static_cast<std::size_t>(timeLength));
    }
    return iso;
}
MachineValue valueOf(modDictation::Seconds seconds) {
    return seconds.count;
}
MachineValue valueOf(std::int64_t number) {
    return number;
}

MachineValue codeValue(std::int32_t dictationField, std::string text) {
    const std::string_view word =
        modDictation::codeWord(modDictation::GetFieldCode(dictationField, text));
    return word.empty() ? std::move(text) : std::string(word);
}

MachineValue textValue(const FieldDefinition& definition, std::string text) {
    switch (definition.valueType) {
    case ValueType::status:
    case ValueType::priority:
        return codeValue(definition.dictationField, std::move(text));
    case ValueType::flag:
        if (isAllDigits(text))
            return std::int64_t{leadingInt32(text)};
        break;
    default:
        break;
    }
    return text;
}

// What a person is shown of it leaves out the folders above.
std::string folderOf(const modDictation::Dictation& dictation) {
    std::string folder = platform::toNativePath(dictation.directory);
    if (folder.size() > 1)
        folder.pop_back(); // what parts it from the name
    return folder;
}

} // namespace

MachineValue machineValue(std::int32_t field, const modDictation::Dictation& dictation) {
    const FieldDefinition& definition = modDictation::fieldDefinition(field);
    if (definition.exportType != ExportType::text)
        if (const auto typed = modDictation::typedValue(field, dictation))
            return std::visit([](const auto& value) { return valueOf(value); }, *typed);
    if (definition.exportType == ExportType::date || definition.exportType == ExportType::length)
        return {};
    std::string text;
    if (field == modDictation::field_id::folder)
        text = folderOf(dictation);
    else
        modDictation::readField(definition.dictationField, dictation, text);
    return text.empty() ? MachineValue() : textValue(definition, platform::textFromBytes(text));
}

std::string machineText(const MachineValue& value) {
    if (const auto* number = std::get_if<std::int64_t>(&value))
        return std::to_string(*number);
    const auto* text = std::get_if<std::string>(&value);
    return text != nullptr ? *text : std::string();
}

std::string pathBytes(const modDictation::Dictation& dictation) {
    const std::string path = nativePathOf(dictation);
    return platform::isValidUtf8(path) ? std::string() : base64(path);
}

} // namespace ov::exporting
