// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "dictation/search/criterion.h"

#include "dictation/field_codes.h"
#include "platform/locale.h"
#include "platform/settings/profile_encoding.h"
#include "platform/text.h"
#include "support/language/modLanguage.h"
#include "support/language/text_ids.h"
#include "support/numbers.h"
#include "support/text_lines.h"

#include <algorithm>
#include <array>

namespace ov::modDictation {

namespace {

constexpr std::size_t partCount = 4;

using Parts = std::array<std::string_view, partCount>;

Parts splitParts(std::string_view text) noexcept {
    Parts parts;
    for (std::string_view& part : parts) {
        const std::size_t end = std::min(text.find(criteriaSeparator), text.size());
        part = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return parts;
}

std::string dateText(std::string_view value) {
    const auto date = platform::parseDate(value);
    return date ? platform::formatShortDate(*date) : std::string();
}

std::string codeText(std::string_view value) {
    return value.empty() ? std::string() : GetStatusText(leadingInt32(value));
}

std::string valueText(ValueType type, std::string_view value) {
    switch (type) {
    case ValueType::text:
    case ValueType::time:
    case ValueType::number:
    case ValueType::marker:
        return std::string(value);
    case ValueType::date:
        return dateText(value);
    case ValueType::code:
    case ValueType::status:
    case ValueType::priority:
    case ValueType::flag:
        return codeText(value);
    case ValueType::none:
        break;
    }
    return {};
}

bool isSameValue(ValueType type, std::string_view one, std::string_view other) {
    if (type == ValueType::text)
        return platform::equalsIgnoringCase(one, other);
    const auto date = type == ValueType::date ? platform::parseDate(one) : std::nullopt;
    return one == other || (date && date == platform::parseDate(other));
}

} // namespace

std::string BuildCriteriaString(std::int32_t field, std::int32_t operatorId,
                                std::string_view value1, std::string_view value2) {
    std::string text = std::to_string(field) + criteriaSeparator + std::to_string(operatorId);
    text.append(1, criteriaSeparator).append(value1);
    text.append(1, criteriaSeparator).append(value2);
    return text;
}

bool isCriteriaString(std::string_view criteriaString) noexcept {
    return std::count(criteriaString.begin(), criteriaString.end(), criteriaSeparator) ==
           partCount - 1;
}

Criterion ParseCriteriaString(std::string_view criteriaString) {
    Criterion criterion;
    if (!isCriteriaString(criteriaString))
        return criterion;
    const Parts parts = splitParts(criteriaString);
    criterion.Field = leadingInt32(parts[0]);
    criterion.Operator = leadingInt32(parts[1]);
    criterion.Value1 = parts[2];
    criterion.Value2 = parts[3];
    return criterion;
}

bool isSameCriterion(std::string_view one, std::string_view other) {
    if (one == other || !isCriteriaString(one) || !isCriteriaString(other))
        return one == other;
    const Criterion a = ParseCriteriaString(one);
    const Criterion b = ParseCriteriaString(other);
    const ValueType type = fieldDefinition(a.Field).valueType;
    return a.Field == b.Field && a.Operator == b.Operator &&
           isSameValue(type, a.Value1, b.Value1) && isSameValue(type, a.Value2, b.Value2);
}

CriteriaLines readCriteriaLines(std::string_view content) {
    const std::string text = platform::settingsText(content);
    CriteriaLines lines;
    forEachLine(
        text,
        [&lines](std::string_view line) {
            if (isCriteriaString(line))
                lines.criteria.emplace_back(line);
            else if (!line.empty())
                ++lines.skipped;
        },
        "\r\n");
    return lines;
}

std::string GetCriterionValueText(std::int32_t field, std::string_view value1,
                                  std::string_view value2) {
    const ValueType type = fieldDefinition(field).valueType;
    const std::string first = valueText(type, value1);
    const std::string second = valueText(type, value2);
    if (first.empty() || second.empty())
        return first + second;
    return first + modLanguage::GetText(text_id::rangeAnd) + second;
}

std::string GetCriterionText(const Criterion& criterion) {
    std::string caption = GetSearchFieldCaption(criterion.Field, true);
    if (criterion.Field == noField)
        return caption;
    return '"' + caption + "\" " + GetOperatorText(criterion.Operator) + ' ' +
           GetCriterionValueText(criterion.Field, criterion.Value1, criterion.Value2);
}

std::string GetCriterionText(std::string_view criteriaString) {
    return GetCriterionText(ParseCriteriaString(criteriaString));
}

std::string GetListedCriterionText(const Criterion& criterion, bool all) {
    std::string plain = GetCriterionText(criterion);
    if (!criterion.indented)
        return plain;
    return modLanguage::GetText(all ? text_id::orCriterion : text_id::andCriterion, {plain});
}

} // namespace ov::modDictation
