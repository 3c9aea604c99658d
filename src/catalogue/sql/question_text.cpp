// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "catalogue/sql/question_text.h"

#include "platform/text.h"

#include <utility>

namespace ov::catalogue::sql {

namespace {

std::string columnOf(const Condition& condition) {
    if (condition.on == Condition::On::folderText)
        return "f.upper";
    return "d." + std::string(keptColumns()[condition.column].name);
}

bool isOfTexts(const Condition& condition) {
    return condition.test == Test::contains || condition.test == Test::containsNot ||
           condition.test == Test::equals;
}

bool isOwnText(const Condition& condition) {
    return condition.on == Condition::On::folderText ||
           keptColumns()[condition.column].keeping == Keeping::ownText;
}

std::vector<std::int64_t> fewNumbers(const Condition& condition) {
    std::vector<std::int64_t> numbers;
    for (const auto& [isAsked, number] :
         {std::pair{condition.absent, kept::absent}, std::pair{condition.empty, kept::empty},
          std::pair{condition.other, kept::other}})
        if (isAsked)
            numbers.push_back(number);
    if (condition.test == Test::numbers)
        numbers.insert(numbers.end(), condition.numbers.begin(), condition.numbers.end());
    return numbers;
}

// Others are in no text that a database has taken.
bool canBeInTexts(std::string_view text) {
    return platform::isValidUtf8(text) && text.find('\0') == std::string_view::npos;
}

// For LIKE: what has it inside.
std::string patternOf(std::string_view text) {
    std::string pattern = "%";
    for (const char c : text) {
        if (c == '%' || c == '_' || c == '\\')
            pattern.push_back('\\');
        pattern.push_back(c);
    }
    return pattern + "%";
}

} // namespace

QuestionText::QuestionText(const Question& question, const Dialect& dialect) : dialect_(dialect) {
    sql_ = question.groups.empty() ? (question.all ? "TRUE" : "FALSE") : "";
    for (const auto& group : question.groups) {
        sql_.append(sql_.empty() ? "(" : question.all ? " AND (" : " OR (");
        addGroup(group, !question.all);
        sql_.push_back(')');
    }
}

QuestionText::QuestionText(const Condition& condition, const Dialect& dialect) : dialect_(dialect) {
    addTexts(condition);
}

bool QuestionText::asksTexts(const Condition& condition) {
    return condition.on == Condition::On::column && isOfTexts(condition) && !isOwnText(condition);
}

void QuestionText::bind(std::initializer_list<std::int64_t> numbers) {
    values_.insert(values_.end(), numbers.begin(), numbers.end());
}

void QuestionText::bind(std::string_view text, bool isText) {
    isText ? values_.emplace_back(Text{text}) : values_.emplace_back(Bytes{text});
}

void QuestionText::addGroup(const std::vector<Condition>& group, bool all) {
    for (const Condition& condition : group) {
        sql_.append(&condition == &group.front() ? "(" : all ? " AND (" : " OR (");
        add(condition);
        sql_.push_back(')');
    }
}

void QuestionText::add(const Condition& condition) {
    isFirstPart_ = true;
    if (condition.on == Condition::On::nothing)
        return addPart("TRUE");
    asksFolders_ = asksFolders_ || condition.on == Condition::On::folderText;
    isOwnText(condition) ? addTextParts(condition) : addNumberParts(condition);
    if (isFirstPart_)
        addPart("FALSE");
}

void QuestionText::addPart(const std::string& sql) {
    sql_.append(std::exchange(isFirstPart_, false) ? "" : " OR ").append(sql);
}

void QuestionText::addNumberParts(const Condition& condition) {
    const std::string column = columnOf(condition);
    std::string list;
    for (const std::int64_t number : fewNumbers(condition)) {
        list.append(list.empty() ? "?" : ", ?");
        bind({number});
    }
    if (!list.empty())
        addPart(column + " IN (" + list + ")");
    if (!isOfTexts(condition))
        return addTest(condition, column);
    addPart(column + " IN (SELECT number FROM texts WHERE ");
    addTexts(condition);
    sql_.push_back(')');
}

void QuestionText::addTexts(const Condition& condition) {
    sql_.append(dialect_.whichTexts).append("field = ? AND ");
    bind({keptColumns()[condition.column].field});
    addTextTest(condition, "upper", dialect_.hasTextType);
}

void QuestionText::addTest(const Condition& condition, const std::string& column) {
    switch (condition.test) {
    case Test::all:
        addPart(column + " >= ?");
        return bind({kept::first});
    case Test::range:
        addPart(column + " BETWEEN ? AND ?");
        return bind({condition.first, condition.last});
    case Test::outsideRange:
        addPart("(" + column + " >= ? AND " + column + " NOT BETWEEN ? AND ?)");
        return bind({kept::first, condition.first, condition.last});
    case Test::bit:
    case Test::noBit:
        addPart("(" + column + " >= ? AND ((" + column + " - ?) & ?) " +
                (condition.test == Test::bit ? "<> 0)" : "= 0)"));
        return bind({kept::first, kept::first, condition.first});
    default:
        break;
    }
}

// Of columns that have the text itself; an absent one is no value. The folder's may be any bytes.
void QuestionText::addTextParts(const Condition& condition) {
    const std::string column = columnOf(condition);
    const bool isText = dialect_.hasTextType && condition.on == Condition::On::column;
    if (condition.absent)
        addPart(column + " IS NULL");
    if (condition.empty) {
        addPart(column + " = ?");
        bind({}, isText);
    }
    if (condition.test == Test::none)
        return;
    addPart("(" + column + " <> ?");
    bind({}, isText);
    if (isOfTexts(condition)) {
        sql_.append(" AND ");
        addTextTest(condition, column, isText);
    }
    sql_.push_back(')');
}

// Texts are bytes here or as good as that, so that these compare as the matcher does.
void QuestionText::addTextTest(const Condition& condition, const std::string& value, bool isText) {
    if (isText && !canBeInTexts(condition.text)) {
        sql_.append(condition.test == Test::containsNot ? "TRUE" : "FALSE");
        return;
    }
    if (isText && condition.test != Test::equals)
        return addLike(condition, value);
    sql_.append(condition.test == Test::equals
                    ? value + " = ?"
                    : std::string(dialect_.findBytes) + "(" + value + ", ?)");
    if (condition.test != Test::equals)
        sql_.append(condition.test == Test::contains ? " > 0" : " = 0");
    bind(condition.text, isText);
}

void QuestionText::addLike(const Condition& condition, const std::string& value) {
    sql_.append(value).append(condition.test == Test::contains ? " LIKE ?" : " NOT LIKE ?");
    bind(patterns_.emplace_back(patternOf(condition.text)), true);
}

} // namespace ov::catalogue::sql
