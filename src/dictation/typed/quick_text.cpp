// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "dictation/typed/quick_text.h"

#include "dictation/typed/criterion_text.h"
#include "dictation/typed/quick_lexer.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace ov::modDictation {

namespace {

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
    std::size_t endOfItem(std::size_t first) const;
    void leaveOut(std::size_t first);
    void failTooMany(const Condition& items);

    std::span<const QuickPart> parts_;
    const QuickRules& rules_;
    std::size_t at_ = 0;
    std::size_t depth_ = 0;
    std::vector<std::size_t> outermost_; // parts at which the items outside of brackets begin
    QuickError error_;
    std::size_t failed_ = 0;
    std::vector<QuickSearch::Range> leftOut_;
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
        QuickCondition word = readQuickWord(part.text, rules_);
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

// Behind the ")" of a group, or behind all where it is missing.
std::size_t PartsReader::endOfItem(std::size_t first) const {
    std::size_t at = first;
    while (at < parts_.size() && parts_[at].kind == QuickPart::Kind::negation)
        ++at;
    std::size_t open = 0;
    for (; at < parts_.size(); ++at) {
        open += parts_[at].kind == QuickPart::Kind::open ? 1 : 0;
        open -= parts_[at].kind == QuickPart::Kind::close && open > 0 ? 1 : 0;
        if (open == 0)
            return at + 1;
    }
    return at;
}

// With what was left out of it.
void PartsReader::leaveOut(std::size_t first) {
    while (!leftOut_.empty() && leftOut_.back().first >= first)
        leftOut_.pop_back();
    at_ = endOfItem(first);
    leftOut_.push_back({first, at_});
}

PartsReader::Result PartsReader::readItems(Condition::Kind kind) {
    std::vector<Condition> items;
    const std::size_t depth = depth_;
    const bool endsAtClose = depth > 0 || !rules_.filtersRows;
    while (at_ < parts_.size() && !(isAt(QuickPart::Kind::close) && endsAtClose)) {
        const std::size_t first = at_;
        if (depth == 0)
            outermost_.push_back(first);
        if (auto item = readItem(otherKind(kind)))
            items.push_back(*std::move(item));
        else if (!rules_.filtersRows)
            return std::nullopt;
        else
            leaveOut(first);
        depth_ = depth;
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
        return {{}, std::move(error_), failed_, {}};
    return {*std::move(criteria), {}, 0, std::move(leftOut_)};
}

} // namespace

QuickSearch readQuickParts(std::span<const QuickPart> parts, const QuickRules& rules) {
    if (parts.empty())
        return {};
    return PartsReader(parts, rules).read();
}

} // namespace ov::modDictation
