// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "dictation/typed/quick_values.h"

#include "dictation/typed/criterion_values.h"
#include "dictation/typed/quick_lexer.h"
#include "dictation/typed/quick_period.h"
#include "dictation/typed/ranges.h"
#include "platform/text.h"

#include <algorithm>
#include <array>
#include <string>
#include <utility>
#include <vector>

namespace ov::modDictation {

namespace {

namespace op = operator_id;

// A place among the values, and the text that it stands for.
struct Piece {
    std::string_view place;
    std::string text;
};

// The days or seconds that compare so with all of `range`.
NumberRange compared(Comparison comparison, const NumberRange& range) {
    switch (comparison) {
    case Comparison::less:
        return {lowestNumber, range.first - 1};
    case Comparison::atMost:
        return {lowestNumber, range.last};
    case Comparison::more:
        return {range.last + 1, highestNumber};
    case Comparison::atLeast:
        return {range.first, highestNumber};
    default:
        return range;
    }
}

// The first dot of three may end a date.
std::size_t dotsOfRange(std::string_view text) {
    const std::size_t dots = text.find("..");
    return dots + (dots != std::string_view::npos && text.substr(dots).starts_with("...") ? 1 : 0);
}

class ValueReader {
public:
    ValueReader(const FieldDefinition& field, std::string_view values,
                const platform::DateTime& now)
        : field_(field), values_(values), now_(now) {}

    QuickCondition read();

private:
    using Result = std::optional<Condition>;

    bool isRanged() const {
        return field_.valueType == ValueType::date || field_.valueType == ValueType::time;
    }
    std::nullopt_t fail(std::string text, std::string_view at);
    std::nullopt_t failExpecting(std::string_view at);
    std::optional<Piece> piece(std::string_view place);
    Result readOne(std::string_view value);
    Result readRange(std::string_view first, std::string_view last, std::string_view value);
    Result readText(Comparison comparison, const Piece& piece);
    Result readCode(const Piece& piece);
    Result readMarker(const Piece& piece);
    std::optional<Period> period(const Piece& piece);
    Result ranged(const NumberRange& range, std::string_view at);
    Result empty();

    const FieldDefinition& field_;
    std::string_view values_;
    const platform::DateTime& now_;
    QuickError error_;
};

std::nullopt_t ValueReader::fail(std::string text, std::string_view at) {
    error_ = {std::move(text), static_cast<std::size_t>(at.data() - values_.data()), at.size()};
    return std::nullopt;
}

std::string expectedQuickly(const FieldDefinition& field) {
    switch (field.valueType) {
    case ValueType::date:
        return "a date such as 2026-11-21, 2026-11, today, this-week, last-7-days or -3d";
    case ValueType::time:
        return "a length such as 90s, 5m, 1h30m or 0:05:00, at most 32767:59:59";
    case ValueType::marker:
        return "one of marked, yes, not-marked, no";
    default:
        return expectedValue(field);
    }
}

std::nullopt_t ValueReader::failExpecting(std::string_view at) {
    return fail('"' + std::string(at) + "\" is not " + expectedQuickly(field_), at);
}

std::optional<Piece> ValueReader::piece(std::string_view place) {
    place = platform::trimmed(place);
    if (place.empty())
        return fail(missingValue(field_, expectedQuickly(field_)), place);
    if (!place.starts_with('"'))
        return Piece{place, std::string(place)};
    const auto quoted = readQuoted(place);
    if (!quoted)
        return fail("the closing \" is missing", place);
    if (quoted->end != place.size())
        return fail("nothing but , may follow the closing \"", place.substr(quoted->end));
    return Piece{place, quoted->text};
}

ValueReader::Result ValueReader::empty() {
    if (field_.valueType == ValueType::marker)
        return conditionOf({field_.id, op::notMarked, {}, {}});
    return conditionOf({field_.id, op::isEmpty, {}, {}});
}

ValueReader::Result ValueReader::ranged(const NumberRange& range, std::string_view at) {
    const auto criterion = rangeCriterion(field_, range);
    if (!criterion)
        return fail("no dictation can have that", at);
    return conditionOf(*criterion);
}

std::optional<Period> ValueReader::period(const Piece& piece) {
    if (field_.valueType == ValueType::date) {
        if (const auto period = quickPeriod(piece.text, now_))
            return period;
    } else if (const auto seconds = quickSeconds(piece.text)) {
        return Period{{*seconds, *seconds}};
    }
    return failExpecting(piece.place);
}

ValueReader::Result ValueReader::readRange(std::string_view first, std::string_view last,
                                           std::string_view value) {
    NumberRange range{lowestNumber, highestNumber};
    for (const auto& [place, isFirst] :
         {std::pair(platform::trimmed(first), true), std::pair(platform::trimmed(last), false)}) {
        if (place.empty())
            continue;
        const auto part = piece(place);
        const auto days = part ? period(*part) : std::nullopt;
        if (!days)
            return std::nullopt;
        (isFirst ? range.first : range.last) = isFirst ? days->days.first : days->days.last;
    }
    if (range.first > range.last)
        return fail("the range is reversed; say " + std::string(platform::trimmed(last)) + ".." +
                        std::string(platform::trimmed(first)),
                    value);
    if (range.first == lowestNumber && range.last == highestNumber)
        return fail("a range has a beginning, an end or both, as in A..B, A.. and ..B", value);
    return ranged(range, value);
}

ValueReader::Result ValueReader::readText(Comparison comparison, const Piece& piece) {
    const auto stored = storedValue(field_, piece.text);
    if (!stored)
        return failExpecting(piece.place);
    if (stored->empty())
        return fail("an empty text is in every other; for a field without one leave the value out",
                    piece.place);
    return conditionOf(
        {field_.id, comparison == Comparison::equal ? op::is : op::contains, *stored, {}});
}

ValueReader::Result ValueReader::readCode(const Piece& piece) {
    const auto code = codeOfLetters(field_, piece.text);
    if (!code)
        return failExpecting(piece.place);
    return conditionOf({field_.id, op::equal, *code, {}});
}

ValueReader::Result ValueReader::readMarker(const Piece& piece) {
    for (const auto& [word, operatorId] :
         {std::pair("marked", op::marked), std::pair("yes", op::marked), std::pair("d", op::marked),
          std::pair("not-marked", op::notMarked), std::pair("no", op::notMarked)})
        if (platform::equalsIgnoringCase(piece.text, word))
            return conditionOf({field_.id, operatorId, {}, {}});
    return failExpecting(piece.place);
}

ValueReader::Result ValueReader::readOne(std::string_view value) {
    std::string_view rest = platform::trimmed(value);
    const Comparison comparison = takeComparison(rest);
    if (comparison > Comparison::equal && !isRanged())
        return fail("only dates and lengths can be compared; the fields for them are dictated, "
                    "changed, due and length",
                    platform::trimmed(value));
    if (comparison == Comparison::none && platform::equalsIgnoringCase(rest, "empty"))
        return empty();
    const std::size_t dots = dotsOfRange(rest);
    if (isRanged() && comparison == Comparison::none && dots != std::string_view::npos)
        return readRange(rest.substr(0, dots), rest.substr(dots + 2), rest);
    const auto only = piece(rest);
    if (!only)
        return std::nullopt;
    if (hasCodes(field_.valueType))
        return readCode(*only);
    if (field_.valueType == ValueType::marker)
        return readMarker(*only);
    if (!isRanged())
        return readText(comparison, *only);
    const auto days = period(*only);
    if (!days)
        return std::nullopt;
    if (comparison <= Comparison::equal && days->operatorId != op::any)
        return conditionOf({field_.id, days->operatorId, {}, {}});
    return ranged(compared(comparison, days->days), rest);
}

QuickCondition ValueReader::read() {
    std::string_view rest = platform::trimmed(values_);
    const bool negated = rest.starts_with('!');
    if (negated)
        rest = platform::trimmed(rest.substr(1));
    std::vector<Condition> parts;
    for (bool more = !rest.empty(); more;) {
        const std::size_t comma = findUnquoted(rest, ",");
        more = comma != std::string_view::npos;
        auto part = readOne(rest.substr(0, comma));
        if (!part)
            return {{}, std::move(error_)};
        parts.push_back(*std::move(part));
        rest.remove_prefix(more ? comma + 1 : 0);
    }
    if (parts.empty())
        parts.push_back(*empty());
    Condition all = joined(Condition::Kind::anyOf, std::move(parts));
    if (!negated)
        return {std::move(all), {}};
    auto other = opposite(all, now_);
    if (!other) {
        fail(std::string(noOpposite), values_);
        return {{}, std::move(error_)};
    }
    return {*std::move(other), {}};
}

} // namespace

QuickCondition readQuickValues(const FieldDefinition& field, std::string_view values,
                               const platform::DateTime& now) {
    return ValueReader(field, values, now).read();
}

} // namespace ov::modDictation
