// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "dictation/typed/quick_text.h"

#include "dictation/typed/criterion_text.h"
#include "dictation/typed/criterion_values.h"
#include "dictation/typed/field_word.h"
#include "dictation/typed/quick_lexer.h"
#include "platform/text.h"

#include <algorithm>
#include <optional>
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

QuickCondition textCondition(const std::string& text, std::string_view word) {
    if (platform::trimmed(text).empty())
        return failure("an empty text is in every other", 0, word.size());
    if (!storedValue(fieldDefinition(field_id::author), text))
        return failure("a text has no control characters", 0, word.size());
    return {inAnyText(text), {}};
}

// A word without its negation.
QuickCondition freeWord(std::string_view word) {
    if (!word.starts_with('"'))
        return textCondition(std::string(word), word);
    const auto quoted = readQuoted(word);
    if (!quoted)
        return failure("the closing \" is missing", 0, word.size());
    if (quoted->end != word.size())
        return failure("nothing may follow the closing \"", quoted->end, word.size() - quoted->end);
    return textCondition(quoted->text, word);
}

QuickCondition readWord(std::string_view word, const platform::DateTime& now) {
    const std::string_view name = fieldNameOf(word);
    if (name.empty())
        return freeWord(word);
    const std::int32_t field = fieldOfWord(name);
    if (field == noField)
        return failure(noSuchField(name), 0, name.size());
    const std::size_t start = name.size() + 1;
    QuickCondition read = readQuickValues(fieldDefinition(field), word.substr(start), now);
    read.error.offset += start;
    return read;
}

class PartsReader {
public:
    PartsReader(std::span<const QuickPart> parts, const QuickRules& rules)
        : parts_(parts), rules_(rules) {}

    QuickSearch read();

private:
    using Result = std::optional<Condition>;

    bool isAt(QuickPart::Kind kind) const {
        return at_ < parts_.size() && parts_[at_].kind == kind;
    }
    std::nullopt_t fail(std::string text, std::size_t part);
    // Of a level, the last part of which is a ")", or the end.
    Result readItems(Condition::Kind kind);
    Result readItem(Condition::Kind inside);
    Result readGroup(Condition::Kind kind);
    Result readSingle();
    void failTooMany(const Condition& items);

    std::span<const QuickPart> parts_;
    const QuickRules& rules_;
    std::size_t at_ = 0;
    std::size_t depth_ = 0;
    std::vector<std::size_t> outermost_; // parts at which the items outside of brackets begin
    QuickError error_;
    std::size_t failed_ = 0;
};

Condition::Kind otherKind(Condition::Kind kind) {
    return kind == Condition::Kind::allOf ? Condition::Kind::anyOf : Condition::Kind::allOf;
}

std::nullopt_t PartsReader::fail(std::string text, std::size_t part) {
    failed_ = std::min(part, parts_.size() - 1);
    error_ = {std::move(text), 0, parts_[failed_].text.size()};
    return std::nullopt;
}

PartsReader::Result PartsReader::readSingle() {
    const QuickPart& part = parts_[at_];
    failed_ = at_++;
    if (part.kind == QuickPart::Kind::word) {
        QuickCondition word = parseQuickWord(part.text, rules_.now);
        error_ = std::move(word.error);
        return error_.text.empty() ? Result(std::move(word.condition)) : std::nullopt;
    }
    ParsedCriterion parsed = parseCriterion(part.text);
    if (parsed.ok())
        return conditionOf(std::move(parsed.criterion));
    error_ = {std::move(parsed.error), parsed.offset, parsed.length};
    return std::nullopt;
}

PartsReader::Result PartsReader::readGroup(Condition::Kind kind) {
    constexpr std::size_t deepest = 20; // of brackets that anybody understands
    const std::size_t opened = at_++;
    if (++depth_ > deepest)
        return fail("too many brackets within each other", opened);
    auto items = readItems(kind);
    if (items && !isAt(QuickPart::Kind::close))
        return fail("the closing ) is missing", opened);
    if (items && items->parts.empty() && items->kind != Condition::Kind::criterion)
        return fail("there is nothing between the brackets", opened);
    ++at_;
    --depth_;
    return items;
}

PartsReader::Result PartsReader::readItem(Condition::Kind inside) {
    const std::size_t first = at_;
    bool negated = false;
    for (; isAt(QuickPart::Kind::negation); ++at_)
        negated = !negated;
    if (at_ == parts_.size() || isAt(QuickPart::Kind::close))
        return fail("there is nothing to negate", first);
    auto item = isAt(QuickPart::Kind::open) ? readGroup(inside) : readSingle();
    if (!item || !negated)
        return item;
    auto other = opposite(*item, rules_.now);
    if (!other)
        return fail(std::string(noOpposite), first);
    return other;
}

PartsReader::Result PartsReader::readItems(Condition::Kind kind) {
    std::vector<Condition> items;
    while (at_ < parts_.size() && !isAt(QuickPart::Kind::close)) {
        if (depth_ == 0)
            outermost_.push_back(at_);
        auto item = readItem(otherKind(kind));
        if (!item)
            return std::nullopt;
        items.push_back(*std::move(item));
    }
    return joined(kind, std::move(items));
}

// Marks the largest of the items beside each other, and says what makes so many.
void PartsReader::failTooMany(const Condition& items) {
    const auto sizeOf = [this](const Condition& item) {
        const auto criteria = criteriaOf(item, rules_.all);
        return criteria ? criteria->size() : mostCriteria + 1;
    };
    std::size_t largest = 0;
    for (std::size_t i = 1; i < items.parts.size() && items.parts.size() == outermost_.size(); ++i)
        if (sizeOf(items.parts[i]) > sizeOf(items.parts[largest]))
            largest = i;
    std::string reasons;
    const bool hasTexts = std::ranges::any_of(parts_, [](const QuickPart& part) {
        return part.kind == QuickPart::Kind::word && fieldNameOf(part.text).empty();
    });
    if (hasTexts)
        reasons = ", as a text without a field is looked for in " +
                  std::to_string(fieldsOfFreeWords().size()) + " fields";
    if (std::ranges::count(parts_, QuickPart::Kind::open, &QuickPart::kind) > 0)
        reasons += std::string(hasTexts ? " and" : ", as") + " groups within groups multiply";
    fail("that makes more than " + std::to_string(mostCriteria) + " criteria" + reasons + "; " +
             (hasTexts ? "name the field, as in subject:knee, or " : "") + "search several times",
         outermost_.at(largest));
}

QuickSearch PartsReader::read() {
    auto items = readItems(rules_.all ? Condition::Kind::allOf : Condition::Kind::anyOf);
    if (items && isAt(QuickPart::Kind::close))
        items = fail("there is no ( for this )", at_);
    auto criteria = items ? criteriaOf(*items, rules_.all) : std::nullopt;
    if (items && !criteria)
        failTooMany(*items);
    if (!criteria)
        return {{}, std::move(error_), failed_};
    return {*std::move(criteria), {}, 0};
}

} // namespace

QuickSearch readQuickParts(std::span<const QuickPart> parts, const QuickRules& rules) {
    if (parts.empty())
        return {};
    return PartsReader(parts, rules).read();
}

QuickCondition parseQuickWord(std::string_view word, const platform::DateTime& now) {
    const std::string text = platform::textFromBytes(word);
    if (const std::size_t second = secondField(text); second != std::string_view::npos)
        return failure("here begins another criterion: give each as an argument of its own, or put "
                       "the text in quotes",
                       second, text.size() - second);
    std::string_view rest = text;
    const bool negated = takeNegation(rest);
    QuickCondition read = readWord(rest, now);
    read.error.offset += negated ? 1 : 0;
    if (!read.ok() || !negated)
        return read;
    auto other = opposite(read.condition, now);
    return other ? QuickCondition{*std::move(other), {}}
                 : failure(std::string(noOpposite), 0, text.size());
}

std::vector<std::int32_t> fieldsOfFreeWords() {
    std::vector<std::int32_t> fields;
    for (const FieldDefinition& field : fieldDefinitions())
        if (field.valueType == ValueType::text && field.id != field_id::name && !field.key.empty())
            fields.push_back(field.id);
    return fields;
}

bool namesField(std::string_view word) {
    const std::string_view name = fieldNameOf(word);
    return !name.empty() && fieldOfWord(name) != noField;
}

} // namespace ov::modDictation
