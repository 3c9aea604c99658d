// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "export/cell.h"

#include "dictation/dictation_record.h"
#include "dictation/field_table.h"
#include "dictation/field_values.h"
#include "platform/files.h"
#include "platform/text.h"

#include <charconv>

namespace ov::exporting {

using modDictation::ValueType;

namespace {

constexpr std::int32_t numberField = 8; // text by its type, since it may be anything

std::optional<RealValue> numberIn(std::string_view text) {
    constexpr std::size_t exactDigits = 15; // of the numbers of spreadsheets and of JSON readers
    std::int64_t number = 0;
    const auto read = std::from_chars(text.data(), text.data() + text.size(), number);
    if (read.ec != std::errc() || text.size() > exactDigits || std::to_string(number) != text)
        return std::nullopt;
    return number;
}

std::optional<RealValue> valueIn(std::int32_t field, std::string_view text) {
    const ValueType type = modDictation::fieldDefinition(field).valueType;
    if (type == ValueType::date)
        return modDictation::readDateOrSerial(text);
    if (type == ValueType::time) {
        const auto seconds = modDictation::readSeconds(text);
        return seconds ? std::optional<RealValue>(Seconds{*seconds}) : std::nullopt;
    }
    return field == numberField ? numberIn(text) : std::nullopt;
}

} // namespace

std::string nativePath(const Hit& hit) {
    return platform::toNativePath(std::string(hit.directory).append(hit.fileName));
}

std::string cellBytes(const Column& column, const Hit& hit) {
    if (column.field == pathColumn)
        return nativePath(hit);
    std::string buffer;
    return modDictation::fieldText(column.field, hit.directory,
                                   modDictation::dictationName(hit.fileName, buffer));
}

std::string cellText(const Column& column, const Hit& hit) {
    std::string text = cellBytes(column, hit);
    return platform::isValidUtf8(text) ? text : platform::textFromBytes(text);
}

std::string HitRows::text(const Column& column, std::int64_t row) const {
    return cellText(column, hit(row));
}

std::optional<RealValue> cellValue(const Column& column, const Hit& hit) {
    if (column.field == pathColumn)
        return std::nullopt;
    std::string buffer;
    std::string text;
    modDictation::GetDictationField(modDictation::fieldDefinition(column.field).dictationField,
                                    hit.directory,
                                    modDictation::dictationName(hit.fileName, buffer), text);
    return valueIn(column.field, text);
}

} // namespace ov::exporting
