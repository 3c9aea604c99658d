// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// A word of the quick form.

#include "dictation/typed/criterion_text.h"
#include "dictation/typed/criterion_values.h"
#include "dictation/typed/field_word.h"
#include "dictation/typed/quick_lexer.h"
#include "dictation/typed/quick_text.h"
#include "platform/text.h"

#include <utility>

namespace ov::modDictation {

namespace {

constexpr std::string_view blanks = " \t";

QuickCondition failure(std::string text, std::size_t offset, std::size_t length) {
    return {{}, {std::move(text), offset, length}};
}

Condition inAnyText(const std::string& text) {
    std::vector<Condition> parts;
    for (const std::int32_t field : fieldsOfFreeWords())
        parts.push_back(conditionOf({field, operator_id::contains, text, {}}));
    return joined(Condition::Kind::anyOf, std::move(parts));
}

bool namesField(std::string_view word) {
    const std::string_view name = fieldNameOf(word);
    return !name.empty() && fieldOfWord(name) != noField;
}

// Where a blank is followed by the name of another field.
std::size_t secondField(std::string_view word) {
    std::size_t at = findUnquoted(word, blanks);
    while (at != std::string_view::npos) {
        std::string_view next = word.substr(at + 1);
        takeNegation(next);
        if (namesField(next))
            return at + 1;
        at = word.find_first_of(blanks, at + 1);
    }
    return at;
}

std::string noSuchField(std::string_view name) {
    const std::string sentence = unknownField(name);
    return sentence + (sentence.ends_with('?') ? "" : ".") +
           " A text that holds \":\" stands in quotes.";
}

QuickCondition textCondition(const std::string& text, std::string_view word,
                             const QuickRules& rules) {
    if (platform::trimmed(text).empty())
        return failure("an empty text is in every other", 0, word.size());
    if (!storedValue(fieldDefinition(field_id::author), text))
        return failure("a text has no control characters", 0, word.size());
    if (rules.filtersRows)
        return {conditionOf({shownTexts, operator_id::contains, text, {}}), {}};
    return {inAnyText(text), {}};
}

// A word without its negation.
QuickCondition freeWord(std::string_view word, const QuickRules& rules) {
    if (!word.starts_with('"'))
        return textCondition(std::string(word), word, rules);
    const auto quoted = readQuoted(word);
    if (!quoted)
        return failure("the closing \" is missing", 0, word.size());
    if (quoted->end != word.size())
        return failure("nothing may follow the closing \"", quoted->end, word.size() - quoted->end);
    return textCondition(quoted->text, word, rules);
}

QuickCondition readWord(std::string_view word, const QuickRules& rules) {
    const std::string_view name = fieldNameOf(word);
    const std::int32_t field = name.empty() ? noField : fieldOfWord(name);
    if (name.empty() || (field == noField && rules.filtersRows))
        return freeWord(word, rules);
    if (field == noField)
        return failure(noSuchField(name), 0, name.size());
    const std::size_t start = name.size() + 1;
    const std::string_view values = word.substr(start);
    if (rules.filtersRows && (values.empty() || values == "!"))
        return failure("a value is missing", start, values.size());
    QuickCondition read = readQuickValues(fieldDefinition(field), values, rules.now);
    read.error.offset += start;
    return read;
}

} // namespace

std::vector<std::int32_t> fieldsOfFreeWords() {
    std::vector<std::int32_t> fields;
    for (const FieldDefinition& field : fieldDefinitions())
        if (field.valueType == ValueType::text && field.id != field_id::name && !field.key.empty())
            fields.push_back(field.id);
    return fields;
}

QuickCondition readQuickWord(std::string_view word, const QuickRules& rules) {
    const std::string text = platform::textFromBytes(word);
    if (const std::size_t second = secondField(text); second != std::string_view::npos)
        return failure("here begins another criterion: give each as an argument of its own, or put "
                       "the text in quotes",
                       second, text.size() - second);
    if (rules.filtersRows && (text == "-" || text == "!"))
        return failure("there is nothing to negate", 0, text.size());
    std::string_view rest = text;
    const bool negated = takeNegation(rest);
    QuickCondition read = readWord(rest, rules);
    read.error.offset += negated ? 1 : 0;
    if (!read.ok() || !negated)
        return read;
    auto other = opposite(read.condition, rules.now);
    return other ? QuickCondition{*std::move(other), {}}
                 : failure(std::string(noOpposite), 0, text.size());
}

} // namespace ov::modDictation
