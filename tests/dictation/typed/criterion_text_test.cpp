// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "dictation/typed/criterion_text.h"
#include "dictation/typed/search_text.h"
#include "tests/dictation/typed/typed_fixture.h"

#include <algorithm>

namespace ov::modDictation {
namespace {

class CriterionText : public Typed {
protected:
    // "5|17|müller|", or the error.
    static std::string parse(const std::string& text) {
        const ParsedCriterion parsed = parseCriterion(text);
        if (!parsed.ok())
            return parsed.error;
        const modDictation::Criterion& c = parsed.criterion;
        std::string stored =
            modDictation::BuildCriteriaString(c.Field, c.Operator, c.Value1, c.Value2);
        std::replace(stored.begin(), stored.end(), modDictation::criteriaSeparator, '|');
        return stored;
    }
    static SearchText readBarred(std::string content) {
        std::replace(content.begin(), content.end(), '|', criteriaSeparator);
        return readSearchText(content);
    }
};

TEST_F(CriterionText, TextsDatesTimesNumbers) {
    const Cases cases = {{"  author\t contains \t von der  Au \t", "5|17|von der  Au|"},
                         {"AUTHOR Contains MÜLLER", "5|17|MÜLLER|"},
                         {"author contains M\xFCller", "5|17|Müller|"},
                         {"author is a..b", "5|18|a..b|"},
                         {"14 17 H652/26", "14|17|H652/26|"},
                         {"due LAST-MONTH", "16|10||"},
                         {"due = 1/11/2026", "16|13|2026-11-01|"},
                         {"due between 1.11.2026 .. 2026-11-30", "16|16|2026-11-01|2026-11-30"},
                         {"length is 1:30", "13|25|01:30:00|"},
                         {"length != 00$02$15", "13|24|00:02:15|"},
                         {"length at-least 100:00:01", "13|27|100:00:01|"},
                         {"10 > 37979,6", "10|28|37980|"},
                         {"10 between -5..1e3", "10|30|-5|1000"}};
    for (const auto& [text, stored] : cases)
        EXPECT_EQ(parse(text), stored) << text;
}

TEST_F(CriterionText, CodesByNumberWordAndShownText) {
    const Cases both = {{"priority = 3", "15|25|3|"},
                        {"priority != FRIST", "15|24|2|"},
                        {"status = roh", "2|25|7|"},
                        {"status2 is-not MAI", "25|24|9|"},
                        {"flags is (status 128)", "7|25|17|"}};
    for (const std::int32_t language : {7, 9}) {
        speak(language);
        for (const auto& [text, stored] : both)
            EXPECT_EQ(parse(text), stored) << text << ", language " << language;
    }
    EXPECT_EQ(parse("status = DICTATED"), "2|25|6|");
    speak(7);
    EXPECT_EQ(parse("flags = zurückGESTELLT"), "7|25|12|");
}

// The words that a field is said to offer can be typed, and reach every operator it has.
TEST_F(CriterionText, OfferedWordsReachAllOperators) {
    for (const modDictation::FieldDefinition& field : modDictation::fieldDefinitions().subspan(1)) {
        std::set<std::int32_t> reached;
        std::istringstream words(operatorWords(field.id));
        for (std::string word; std::getline(words >> std::ws, word, ',');)
            for (const char* rest : {"", " x", " 2026-11-21", " 0:10", " 1", " 6", " 10",
                                     " 2026-11-21..2026-11-22", " 0:10..0:20", " 1..2"})
                if (const auto parsed =
                        parseCriterion(std::to_string(field.id).append(" ").append(word) + rest);
                    parsed.ok())
                    reached.insert(parsed.criterion.Operator);
        const auto offered = modDictation::offeredOperators(field.valueType);
        EXPECT_EQ(reached, std::set<std::int32_t>(offered.begin(), offered.end())) << field.id;
    }
}

TEST_F(CriterionText, AFileHoldsAllOfASearch) {
    Search search{"\\Dikt\xE4te\\a\nb\\",
                  {{14, operator_id::contains, "root=x", ""},
                   {5, operator_id::is, " with blanks ", ""},
                   {9, operator_id::today, "", ""},
                   {16, operator_id::betweenDates, "2026-11-01", "2026-11-30"},
                   {15, operator_id::notEqual, "3", ""},
                   {10, operator_id::moreThan, "37979", ""},
                   {99, 99, "", "of later versions"}},
                  false,
                  noDepthLimit,
                  7};
    const std::string text = writeSearchText(search, "My\nname");
    EXPECT_NE(text.find("\nfile contains root=x\n"), std::string::npos) << text;
    EXPECT_NE(text.find("\ndue between 2026-11-01..2026-11-30\n"), std::string::npos) << text;
    const SearchText read = readSearchText(text);
    EXPECT_EQ(read.search, search);
    EXPECT_EQ(read.name, "My name");
    EXPECT_EQ(read.skipped, 0U);
    EXPECT_EQ(readSearchText(writeSearchText({{}, {{14, operator_id::is, "a\nb\x01", ""}}}, ""))
                  .search.criteria,
              (std::vector<Criterion>{{14, operator_id::is, "a b ", ""}}));
    const std::vector<Criterion> control = {{5, operator_id::contains, "M\x05M", ""}};
    EXPECT_EQ(writeCriteriaText(control), "author contains M M\n"); // read: written the same
}

TEST_F(CriterionText, AFileMayBeWrittenByAnybody) {
    const auto read = [](const std::string& content) {
        const SearchText text = readBarred(content);
        std::string shown = std::to_string(text.search.all) + " " +
                            std::to_string(text.search.depth) + " " +
                            std::to_string(text.search.limit) + " " + std::to_string(text.skipped) +
                            (text.isSearch ? "" : " none");
        for (const Criterion& c : text.search.criteria)
            shown += "; " + c.Value1;
        return shown;
    };
    for (const auto& [content, shown] :
         Cases{{"5|17|A|\r\n5|17|B|\r", "1 50 999999 0; A; B"},
               {"author contains M\xFCller\n; a remark\n\n  \nall=0\n", "0 50 999999 0; Müller"},
               {"\xEF\xBB\xBF"
                "all=0\r\nlimit=0\ndepth=-9\nrubbish\n",
                "0 -1 1 1"},
               {"no search\n", "1 50 999999 1 none"},
               {"", "1 50 999999 0 none"}})
        EXPECT_EQ(read(content), shown) << content;
}

TEST_F(CriterionText, BlanksBeforeACriterionMakeAGroup) {
    const auto groups = [](const std::string& content) {
        std::string shown;
        for (const Criterion& c : readBarred(content).search.criteria)
            shown += (c.indented ? "+" : " ") + c.Value1;
        return shown;
    };
    for (const auto& [content, shown] :
         Cases{{"author is A\n  author is B\n\tauthor is C\nauthor is D\n", " A+B+C D"},
               {" author is A\n author is B\n", " A+B"},
               {"author is A\n\n  ; why\n all=0\n author is B\n", " A+B"},
               {"author is A\nrubbish\n author is B\n author is C\n", " A B+C"},
               {"author is A\n rubbish\n author is B\n", " A+B"},
               {"author is A\n 5|17|B|\n", " A+B"}})
        EXPECT_EQ(groups(content), shown) << content;
    Search search;
    search.criteria = {{5, operator_id::is, "A", ""},
                       {5, operator_id::is, " B", "", true},
                       {9, operator_id::today, "", "", true}};
    EXPECT_EQ(readSearchText(writeSearchText(search, "")).search, search);
    EXPECT_EQ(writeCriteriaText(search.criteria).substr(0, 14), "author is A\n  ");
    const CriteriaText read = readCriteriaText("all=0\nauthor is A\n author is B\nname=x\n");
    EXPECT_EQ(writeCriteriaText(read.criteria), "author is A\n  author is B\n");
    EXPECT_EQ(read.skipped, 2U);
}

} // namespace
} // namespace ov::modDictation
