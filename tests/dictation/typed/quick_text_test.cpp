// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "dictation/typed/explained_criterion.h"
#include "dictation/typed/quick_text.h"
#include "dictation/typed/search_text.h"
#include "tests/dictation/typed/typed_fixture.h"
#include "tests/quick_line.h"

#include <regex>
#include <set>
#include <string>

namespace ov::modDictation {
namespace {

constexpr platform::DateTime wednesday{2026, 11, 18, 9, 30, 0};

class QuickText : public Typed {
protected:
    // "author contains A; + author contains B": a line of a saved search each, "+" for a blank.
    static std::string linesOf(const std::vector<Criterion>& criteria) {
        std::string lines = writeCriteriaText(criteria);
        lines = std::regex_replace(lines, std::regex("\n  "), "; + ");
        lines = std::regex_replace(lines, std::regex("\n(?=.)"), "; ");
        return lines.substr(0, lines.find('\n'));
    }
    static std::string read(std::string_view text, bool all = true) {
        const QuickSearch search = tests::readQuickLine(text, {wednesday, all});
        return search.ok() ? linesOf(search.criteria) : search.error.text;
    }
    static void expectCriteria(const Cases& cases, bool all = true) {
        for (const auto& [text, criteria] : cases)
            EXPECT_EQ(read(text, all), criteria) << text;
    }
};

TEST_F(QuickText, WordsBecomeCriteria) {
    expectCriteria(
        {{"", ""},
         {" author:müller  prio:high ", "author contains müller; priority is 3"},
         {"AUTH:x author-c:y stat:roh", "author contains x; author-code contains y; status is 7"},
         {"subject:\"a, \"\"b\"\": c\" note1:=5\" ", "subject contains a, \"b\": c; note1 is 5\""},
         {"note1:\"empty\" note1:empty note2:",
          "note1 contains empty; note1 is-empty; note2 is-empty"},
         {"author:a,=b,empty", "author contains a; + author is b; + author is-empty"},
         {"status:ROH,8,sent", "status is 7; + status is 8; + status is 9"},
         {"marker:yes -marker:d", "marker marked; marker not-marked"},
         {"-folder:test !status:roh prio:!high,4",
          "folder not-contains test; status != 7; priority != 3; priority != 4"},
         {"-author: author:!empty", "author is-not-empty; author is-not-empty"}});
}

TEST_F(QuickText, LengthsAndDates) {
    expectCriteria(
        {{"length:5m length:1h30m length:90S length:0:05",
          "length is 00:05:00; length is 01:30:00; length is 00:01:30; length is 00:05:00"},
         {"length:>5m length:>=5m", "length >= 00:05:01; length >= 00:05:00"},
         {"length:<5m length:<=5m", "length <= 00:04:59; length <= 00:05:00"},
         {"length:1m..\"1h 5s\",10h..", "length between 00:01:00..01:00:05; + length >= 10:00:00"},
         {"dictated:this-week due:YESTERDAY", "dictated this-week; due yesterday"},
         {"due:\" 2026-11 \"", "due between 2026-11-01..2026-11-30"},
         {"dictated:<=this-week changed:>last-month",
          "dictated on-or-before 2026-11-22; changed on-or-after 2026-11-01"},
         {"due:-7d due:+2w due:-3 due:-9m", "due is 2026-11-11; due is 2026-12-02; due is "
                                            "2026-11-15; due is 2026-02-18"},
         {"due:2026-11 due:2026 due:21.11. due:<2026-11-01",
          "due between 2026-11-01..2026-11-30; due between 2026-01-01..2026-12-31; due is "
          "2026-11-21; due on-or-before 2026-10-31"},
         {"due:2026-11-01.. due:..1.12.2026 due:1.11...today",
          "due on-or-after 2026-11-01; due on-or-before 2026-12-01; due between "
          "2026-11-01..2026-11-18"}});
}

// What no operator says is said by several; brackets within brackets join as those around them.
TEST_F(QuickText, OppositesAndGroups) {
    expectCriteria(
        {{"length:>40000s length:<=32767h59m length:..117964799s",
          "length >= 11:06:41; length <= 32767:59:00; length <= 32767:59:59"},
         {"-length:>5m", "length <= 00:05:00; + length is-empty"},
         {"-due:2026-11", "due on-or-before 2026-10-31; + due on-or-after 2026-12-01; + due "
                          "is-empty"},
         {"-due:today,tomorrow",
          "due on-or-before 2026-11-17; + due on-or-after 2026-11-19; + due is-empty; "
          "due on-or-before 2026-11-18; + due on-or-after 2026-11-20; + due is-empty"},
         {"( author:a typist:b ) subject:c", "author contains a; + typist contains b; subject "
                                             "contains c"},
         {"( author:a ( typist:b subject:c ) )", "author contains a; + typist contains b; author "
                                                 "contains a; + subject contains c"},
         {"-( author:a -typist:b )", "author not-contains a; typist contains b"}});
}

// Where any criterion is enough, a group is what must match together.
TEST_F(QuickText, AnyJoinsTheOtherWay) {
    expectCriteria({{"author:a,b prio:high", "author contains a; author contains b; priority is 3"},
                    {"( author:a prio:high ) typist:b",
                     "author contains a; + priority is 3; typist contains b"},
                    {"-author:a,b", "author not-contains a; + author not-contains b"}},
                   false);
}

TEST_F(QuickText, FreeWordsSearchAllTexts) {
    const auto search = tests::readQuickLine("müller -\"two words\"", {wednesday, true});
    ASSERT_TRUE(search.ok()) << search.error.text;
    std::set<std::int32_t> fields;
    for (const Criterion& c : search.criteria) {
        const bool first = c.Value1 == "müller";
        EXPECT_EQ(c.Operator, first ? operator_id::contains : operator_id::containsNot);
        EXPECT_EQ(c.indented, first && !fields.empty());
        fields.insert(c.Field);
    }
    EXPECT_EQ(search.criteria.size(), fields.size() * 2);
    EXPECT_EQ(fields, (std::set<std::int32_t>{1, 4, 5, 6, 8, 14, 18, 19, 20, 21, 22, 23, 24}));
    EXPECT_EQ(tests::readQuickLine("10:30", {wednesday, true}).criteria.at(0).Value1, "10:30");
}

TEST_F(QuickText, FieldsAndDaysGoByTheLanguageToo) {
    speak(7);
    for (const auto& [text, criteria] :
         Cases{{"Autor:x prio:dringend", "\"dringend\" is not one of 1 NORMAL (Normal), 2 FRIST "},
               {"autor:x betreff:y", "author contains x; subject contains y"},
               {"LÄNGE:5m termin:heute", "length is 00:05:00; due is 2026-11-18"},
               {"author:x due:today", "author contains x; due today"}})
        EXPECT_EQ(read(text).substr(0, std::string(criteria).size()), criteria) << text;
}

// In a line, as the filter reads it.
TEST_F(QuickText, ErrorsPoint) {
    const std::pair<std::string_view, std::string_view> cases[] = {{"prio:high autor:x y", "autor"},
                                                                   {"( author:x", "("},
                                                                   {"author:x )", ")"},
                                                                   {"x  author:\"a b", "\"a b"},
                                                                   {"y due:2..9", "2"}};
    for (const auto& [text, at] : cases) {
        const modDictation::QuickError& error = tests::readQuickLine(text, {wednesday, true}).error;
        ASSERT_LE(error.offset, text.size()) << text;
        EXPECT_EQ(text.substr(error.offset, error.length), at) << text;
    }
}

TEST_F(QuickText, IsExplained) {
    platform::Locale grouping = platform::locale();
    grouping.groupSign = ",";
    platform::setLocale(grouping);
    EXPECT_EQ(explainedCriterion({9, operator_id::thisWeek, "", ""}, true, wednesday),
              "\"Dictated\" is this week (2026-11-16 to 2026-11-22)");
    EXPECT_EQ(explainedCriterion({16, operator_id::today, "", ""}, true, wednesday),
              "\"Due date\" is today (2026-11-18)");
    EXPECT_EQ(countOfAll(204, 1020113), "204 of 1,020,113");
}

} // namespace
} // namespace ov::modDictation
