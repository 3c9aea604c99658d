// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "dictation/typed/criterion_text.h"

#include "dictation/typed/criterion_values.h"
#include "dictation/typed/field_word.h"
#include "platform/text.h"
#include "support/numbers.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

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

std::string quoted(std::string_view text) {
    return '"' + std::string(text) + '"';
}

// The places of errors are counted in the whole text.
class CriterionParser {
public:
    explicit CriterionParser(std::string_view text) : text_(text) {}

    ParsedCriterion parse();

private:
    ParsedCriterion failure(std::string error, std::string_view at) const {
        return {
            {}, std::move(error), static_cast<std::size_t>(at.data() - text_.data()), at.size()};
    }
    ParsedCriterion withValues(Criterion criterion, const FieldDefinition& field,
                               std::string_view rest) const;
    ParsedCriterion withRange(Criterion criterion, const FieldDefinition& field,
                              std::string_view rest) const;
    std::string readValue(const FieldDefinition& field, std::string_view text,
                          std::string& target) const;
    std::optional<ParsedCriterion> missingBlank() const;

    std::string_view text_;
};

// What is wrong with the value; empty when nothing is.
std::string CriterionParser::readValue(const FieldDefinition& field, std::string_view text,
                                       std::string& target) const {
    if (text.empty())
        return missingValue(field, expectedValue(field));
    const auto stored = storedValue(field, text);
    if (!stored)
        return quoted(text) + " is not " + expectedValue(field);
    target = *stored;
    return {};
}

ParsedCriterion CriterionParser::withRange(Criterion criterion, const FieldDefinition& field,
                                           std::string_view rest) const {
    const std::size_t dots = rest.find("..");
    if (dots == std::string_view::npos)
        return failure("this operator takes two values, A..B, each " + expectedValue(field), rest);
    const std::string_view first = platform::trimmed(rest.substr(0, dots));
    const std::string_view last = platform::trimmed(rest.substr(dots + 2));
    for (const auto& [text, target] :
         {std::pair(first, &criterion.Value1), std::pair(last, &criterion.Value2)})
        if (std::string error = readValue(field, text, *target); !error.empty())
            return failure(std::move(error), text);
    if (isReversed(field.valueType, criterion.Value1, criterion.Value2))
        return failure(
            "the range is reversed; say " + std::string(last) + ".." + std::string(first), rest);
    return {criterion, {}};
}

// Fills in the values of a criterion whose field and operator are known.
ParsedCriterion CriterionParser::withValues(Criterion criterion, const FieldDefinition& field,
                                            std::string_view rest) const {
    const int count = operatorValueCount(criterion.Operator);
    if (count == 2)
        return withRange(std::move(criterion), field, rest);
    if (count == 0 && !rest.empty())
        return failure("this operator takes no value, but " + quoted(rest) + " follows", rest);
    if (count == 0)
        return {criterion, {}};
    std::string error = readValue(field, rest, criterion.Value1);
    return error.empty() ? ParsedCriterion{criterion, {}} : failure(std::move(error), rest);
}

// "length>=00:01:00", and what was meant.
std::optional<ParsedCriterion> CriterionParser::missingBlank() const {
    constexpr std::string_view signs = "=<>!";
    const std::size_t begin = std::min(text_.find_first_of(signs), text_.size());
    const std::size_t end = std::min(text_.find_first_not_of(signs, begin), text_.size());
    const std::string_view key = platform::trimmed(text_.substr(0, begin));
    const std::string_view sign = text_.substr(begin, end - begin);
    const std::int32_t id = fieldOfKey(key);
    if (id == noField || !findOperator(fieldDefinition(id), sign))
        return std::nullopt;
    const std::string_view value = platform::trimmed(text_.substr(end));
    return failure("a blank is missing; say " + quoted(std::string(key) + ' ' + std::string(sign) +
                                                       ' ' + std::string(value)),
                   sign);
}

ParsedCriterion CriterionParser::parse() {
    std::string_view rest = text_;
    const std::string_view fieldToken = takeToken(rest);
    const std::string_view operatorToken = takeToken(rest);
    const std::int32_t id = fieldOfKey(fieldToken);
    const FieldDefinition& field = fieldDefinition(id);
    const auto operatorId = findOperator(field, operatorToken);
    if (id != noField && operatorId)
        return withValues({id, *operatorId, {}, {}}, field, platform::trimmed(rest));
    if (auto missing = missingBlank())
        return *std::move(missing);
    if (id == noField)
        return failure(unknownField(fieldToken), fieldToken);
    return failure("field " + quoted(fieldToken) + " has no operator " + quoted(operatorToken) +
                       "; it offers: " + operatorWords(id),
                   operatorToken);
}

} // namespace

ParsedCriterion parseCriterion(std::string_view text) {
    const std::string utf8 = platform::textFromBytes(text);
    return CriterionParser(utf8).parse();
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
