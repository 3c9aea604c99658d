// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "catalogue/question.h"
#include "catalogue/sql/sql_database.h"

#include <cstdint>
#include <initializer_list>
#include <list>
#include <string>

namespace ov::catalogue::sql {

// A question as SQL: a condition on the tables "d" (dictations) and, where asksFolders() says so,
// "f" (folders), with the values to be bound.
class QuestionText {
public:
    QuestionText(const Question& question, const Dialect& dialect);
    // What asksTexts() of the condition, on the table of texts alone.
    QuestionText(const Condition& condition, const Dialect& dialect);
    // Whether it asks which texts meet it, among those that the catalogue has a list of.
    static bool asksTexts(const Condition& condition);

    const std::string& sql() const noexcept { return sql_; }
    bool asksFolders() const noexcept { return asksFolders_; }
    // As long as this and the question live.
    const Values& values() const noexcept { return values_; }

private:
    void addGroup(const std::vector<Condition>& group, bool all);
    void add(const Condition& condition);
    void addTexts(const Condition& condition);
    void addNumberParts(const Condition& condition);
    void addTextParts(const Condition& condition);
    void addTest(const Condition& condition, const std::string& column);
    void addTextTest(const Condition& condition, const std::string& value, bool isText);
    void addLike(const Condition& condition, const std::string& value);
    void addPart(const std::string& sql);
    void bind(std::initializer_list<std::int64_t> numbers);
    void bind(std::string_view text, bool isText);

    const Dialect dialect_;
    std::string sql_;
    Values values_;
    std::list<std::string> patterns_;
    bool asksFolders_ = false;
    bool isFirstPart_ = true;
};

} // namespace ov::catalogue::sql
