// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "dictation/typed/criterion_text.h"

#include "dictation/field_codes.h"
#include "dictation/field_date.h"
#include "platform/locale.h"
#include "platform/text.h"
#include "support/numbers.h"

#include <algorithm>
#include <array>
#include <optional>
#include <span>

namespace ov::modDictation {

namespace {

struct OperatorWord {
    std::string_view word;
    std::int32_t operatorId;
};

// A word may stand for several operators; of those a field offers one at most.
constexpr std::array<OperatorWord, 39> words = {{
    {"contains", 17},
    {"is", 18},
    {"is", 25},
    {"is", 13},
    {"not-contains", 19},
    {"is-empty", 20},
    {"is-not-empty", 21},
    {"yesterday", 2},
    {"today", 3},
    {"tomorrow", 4},
    {"last-7-days", 5},
    {"next-7-days", 6},
    {"last-week", 7},
    {"this-week", 8},
    {"next-week", 9},
    {"last-month", 10},
    {"this-month", 11},
    {"next-month", 12},
    {"on", 13},
    {"on-or-after", 14},
    {"on-or-before", 15},
    {"between", 16},
    {"between", 30},
    {"between", 31},
    {"=", 25},
    {"=", 18},
    {"=", 13},
    {"!=", 24},
    {">=", 27},
    {">=", 14},
    {"<=", 26},
    {"<=", 15},
    {">", 28},
    {"<", 29},
    {"marked", 32},
    {"not-marked", 33},
    {"is-not", 24},
    {"at-least", 27},
    {"at-most", 26},
}};

std::string_view takeToken(std::string_view& text) {
    const std::size_t start = std::min(text.find_first_not_of(" \t"), text.size());
    text.remove_prefix(start);
    const std::size_t end = std::min(text.find_first_of(" \t"), text.size());
    const std::string_view token = text.substr(0, end);
    text.remove_prefix(end);
    return token;
}

std::string lowerCase(std::string_view text) {
    std::string lower(text);
    for (char& c : lower)
        if (c >= 'A' && c <= 'Z')
            c = static_cast<char>(c + ('a' - 'A'));
    return lower;
}

bool offers(const FieldDefinition& field, std::int32_t operatorId) {
    const auto offered = offeredOperators(field.valueType);
    return std::find(offered.begin(), offered.end(), operatorId) != offered.end();
}

std::optional<std::int32_t> findOperator(const FieldDefinition& field, std::string_view token) {
    const std::string word = lowerCase(token);
    for (const OperatorWord& candidate : words)
        if (candidate.word == word && offers(field, candidate.operatorId))
            return candidate.operatorId;
    if (isAllDigits(token) && offers(field, leadingInt32(token)))
        return leadingInt32(token);
    return std::nullopt;
}

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

// The value as a criteria string stores it; nothing for one that the field cannot have.
std::optional<std::string> storedValue(const FieldDefinition& field, std::string_view text) {
    switch (field.valueType) {
    case ValueType::date:
        return dateValue(text);
    case ValueType::time:
        return timeValue(text);
    case ValueType::number:
        return numberValue(text);
    case ValueType::code:
    case ValueType::status:
    case ValueType::priority:
    case ValueType::flag:
        return codeValue(field, text);
    default:
        return textValue(text);
    }
}

std::string whatIsExpected(const FieldDefinition& field) {
    switch (field.valueType) {
    case ValueType::date:
        return "a date such as 2026-11-21 or " + platform::formatShortDate({2026, 11, 21});
    case ValueType::time:
        return "a time such as 00:05:00";
    case ValueType::number:
        return "a number";
    case ValueType::code:
    case ValueType::status:
    case ValueType::priority:
    case ValueType::flag:
        return "one of " + codeList(field);
    default:
        return "a text without control characters";
    }
}

std::string quoted(std::string_view text) {
    return '"' + std::string(text) + '"';
}

ParsedCriterion failure(std::string error) {
    return {{}, std::move(error)};
}

// Fills in the values of a criterion whose field and operator are known.
ParsedCriterion withValues(Criterion criterion, const FieldDefinition& field,
                           std::string_view rest) {
    const int count = operatorValueCount(criterion.Operator);
    if (count == 0)
        return rest.empty()
                   ? ParsedCriterion{criterion, {}}
                   : failure("this operator takes no value, but " + quoted(rest) + " follows");
    std::array<std::string_view, 2> values = {rest, {}};
    if (count == 2) {
        const std::size_t dots = rest.find("..");
        if (dots == std::string_view::npos)
            return failure("this operator takes two values, A..B, each " + whatIsExpected(field));
        values = {platform::trimmed(rest.substr(0, dots)),
                  platform::trimmed(rest.substr(dots + 2))};
    }
    const std::array<std::string*, 2> targets = {&criterion.Value1, &criterion.Value2};
    for (std::size_t i = 0; i < static_cast<std::size_t>(count); ++i) {
        if (values[i].empty())
            return failure("a value is missing: " + whatIsExpected(field));
        const auto stored = storedValue(field, values[i]);
        if (!stored)
            return failure(quoted(values[i]) + " is not " + whatIsExpected(field));
        *targets[i] = *stored;
    }
    return {criterion, {}};
}

} // namespace

ParsedCriterion parseCriterion(std::string_view text) {
    const std::string utf8 = platform::textFromBytes(text);
    std::string_view rest = utf8;
    const std::string_view fieldToken = takeToken(rest);
    const std::string_view operatorToken = takeToken(rest);
    const std::int32_t id = fieldOfKey(fieldToken);
    if (id == noField)
        return failure("there is no field " + quoted(fieldToken) + "; fields are: " + fieldKeys());
    const FieldDefinition& field = fieldDefinition(id);
    const auto operatorId = findOperator(field, operatorToken);
    if (!operatorId)
        return failure("field " + quoted(fieldToken) + " has no operator " + quoted(operatorToken) +
                       "; it offers: " + operatorWords(id));
    return withValues({id, *operatorId, {}, {}}, field, platform::trimmed(rest));
}

std::string typedCriterion(const Criterion& criterion) {
    const FieldDefinition& field = fieldDefinition(criterion.Field);
    const auto word = std::ranges::find_if(words, [&](const OperatorWord& candidate) {
        return candidate.operatorId == criterion.Operator && offers(field, criterion.Operator);
    });
    if (field.key.empty() || word == words.end())
        return {};
    std::string text = std::string(field.key) + ' ' + std::string(word->word);
    const int count = operatorValueCount(criterion.Operator);
    if (count > 0)
        text.append(" ").append(criterion.Value1);
    if (count > 1)
        text.append("..").append(criterion.Value2);
    // Where blanks or values that the field cannot have would be lost, it cannot be typed.
    ParsedCriterion again = parseCriterion(text);
    again.criterion.indented = criterion.indented;
    return again.ok() && again.criterion == criterion ? text : std::string();
}

std::int32_t fieldOfKey(std::string_view key) {
    return std::max(fieldIdOfKey(lowerCase(key)), noField);
}

std::string operatorWords(std::int32_t field) {
    const FieldDefinition& definition = fieldDefinition(field);
    std::string list;
    for (const std::int32_t operatorId : offeredOperators(definition.valueType))
        for (const OperatorWord& candidate : words)
            if (candidate.operatorId == operatorId &&
                findOperator(definition, candidate.word) == operatorId)
                list.append(list.empty() ? "" : ", ").append(candidate.word);
    return list;
}

std::string fieldKeys() {
    std::string list;
    for (const FieldDefinition& field : fieldDefinitions())
        if (!field.key.empty())
            list.append(list.empty() ? "" : ", ").append(field.key);
    return list;
}

} // namespace ov::modDictation
