// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "dictation/dictation_details.h"

#include "dictation/dictation_record.h"
#include "dictation/field_table.h"
#include "dictation/field_values.h"
#include "platform/files.h"
#include "support/numbers.h"

#include <algorithm>
#include <optional>
#include <string_view>

namespace ov::modDictation {

namespace {

std::optional<std::string_view> rawText(std::int32_t dictationField, std::string_view name) {
    return findFieldValue(name, fieldTag(dictationField));
}

Detail detail(const FieldDefinition& field, const Dictation& dictation,
              std::optional<std::string_view> raw) {
    return {std::string(field.key), GetSearchFieldCaption(field.id, true),
            shownValue(field.id, dictation), std::string(raw.value_or("-")), !raw};
}

bool isInTable(std::int32_t dictationField) {
    return std::ranges::any_of(fieldDefinitions(), [dictationField](const FieldDefinition& field) {
        return !field.key.empty() && field.dictationField == dictationField;
    });
}

void addOtherFields(const Dictation& dictation, std::string_view name,
                    std::vector<Detail>& details) {
    constexpr std::string_view separator = "@@";
    for (std::size_t at = name.find(separator); at != std::string_view::npos;
         at = name.find(separator, at + 1)) {
        const std::string_view rest = name.substr(at + separator.size());
        const std::string_view digits = rest.substr(0, rest.find('$'));
        const std::int32_t number = isAllDigits(digits) ? leadingInt32(digits) : 0;
        const std::string tag = fieldTag(number);
        // A number with leading zeros is no tag; of two equal ones readers take the first.
        if (number == 0 || isInTable(number) || name.find(tag) != at)
            continue;
        std::string text;
        readField(number, dictation, text);
        details.push_back({"", tag, text, std::string(rawText(number, name).value_or(""))});
    }
}

} // namespace

std::vector<Detail> fieldDetails(const Dictation& dictation) {
    std::string buffer;
    const std::string_view name = dictationName(dictation.name, buffer);
    std::vector<Detail> details;
    for (const FieldDefinition& field : fieldDefinitions())
        if (field.dictationField > 0)
            details.push_back(detail(field, dictation, rawText(field.dictationField, name)));
    addOtherFields(dictation, name, details);
    return details;
}

std::vector<Detail> wholeDetails(const Dictation& dictation) {
    std::string buffer;
    const std::string_view name = dictationName(dictation.name, buffer);
    const std::string native = platform::toNativePath(dictation.directory);
    std::vector<Detail> details;
    for (const FieldDefinition& field : fieldDefinitions())
        if (field.dictationField < 0 && !field.key.empty()) {
            const bool isFolder = field.dictationField == dictation_field::directory;
            details.push_back(detail(field, dictation, isFolder ? std::string_view(native) : name));
        }
    return details;
}

} // namespace ov::modDictation
