// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "dictation/criterion.h"
#include "dictation/field_table.h"
#include "platform/locale.h"
#include "support/modLanguage.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace ov::modDictation {
namespace {

TEST(Criterion, TextForm) {
    EXPECT_EQ(BuildCriteriaString(15, 25, "3", ""), "15\x01"
                                                    "25\x01"
                                                    "3\x01");
    const std::vector<Criterion> criteria = {
        {15, 25, "3", ""}, {2, 20, "", ""}, {5, 17, "Müller \"x\"", ""}, {9, 16, "a", "b"}};
    for (const Criterion& c : criteria)
        EXPECT_EQ(ParseCriteriaString(BuildCriteriaString(c.Field, c.Operator, c.Value1, c.Value2)),
                  c);
}

TEST(Criterion, UnreadableTextsAndNumbers) {
    for (const char* text : {"", "5",
                             "5\x01"
                             "17\x01x",
                             "5\x01"
                             "17\x01x\x01y\x01z"})
        EXPECT_EQ(ParseCriteriaString(text), Criterion{}) << text;
    struct Case {
        const char* part;
        std::int32_t number;
    };
    for (const Case& c : std::vector<Case>{{"12abc", 12},
                                           {"", 0},
                                           {"x", 0},
                                           {" 7", 7},
                                           {"2.5", 2},
                                           {"3.5", 4},
                                           {"1e1", 10},
                                           {"99999999999", 2147483647},
                                           {"-3", -3}})
        EXPECT_EQ(ParseCriteriaString(std::string(c.part) + "\x01" + c.part + "\x01\x01"),
                  (Criterion{c.number, c.number, "", ""}))
            << c.part;
}

TEST(Criterion, LinesOfAFile) {
    const CriteriaLines lines = readCriteriaLines("5\x01"
                                                  "17\x01M\xFCller\x01\r\n\r\nrubbish\n"
                                                  "2\x01"
                                                  "20\x01\x01");
    ASSERT_EQ(lines.criteria.size(), 2U);
    EXPECT_EQ(ParseCriteriaString(lines.criteria[0]), (Criterion{5, 17, "Müller", ""}));
    EXPECT_EQ(ParseCriteriaString(lines.criteria[1]), (Criterion{2, 20, "", ""}));
    EXPECT_EQ(lines.skipped, 1U);
    EXPECT_EQ(readCriteriaLines("\xEF\xBB\xBF"
                                "5\x01"
                                "17\x01x\x01")
                  .criteria,
              std::vector<std::string>{BuildCriteriaString(5, 17, "x", "")})
        << "a byte-order mark";
}

TEST(Criterion, SameQuestion) {
    const auto same = [](const Criterion& a, const Criterion& b) {
        const auto text = [](const Criterion& c) {
            return BuildCriteriaString(c.Field, c.Operator, c.Value1, c.Value2);
        };
        return isSameCriterion(text(a), text(b));
    };
    EXPECT_TRUE(same({5, 17, "Müller", ""}, {5, 17, "mu\u0308LLER", ""}));
    EXPECT_TRUE(same({9, 16, "21.11.2026", "2026-12-24"}, {9, 16, "2026-11-21", "24.12.2026"}));
    EXPECT_FALSE(same({9, 16, "21.11.2026", "2026-12-24"}, {9, 16, "2026-11-21", "2026-12-23"}));
    EXPECT_FALSE(same({9, 13, "soon", ""}, {9, 13, "later", ""}));
    EXPECT_FALSE(same({5, 17, "x", ""}, {5, 19, "x", ""}));
    EXPECT_FALSE(same({4, 17, "x", ""}, {5, 17, "x", ""}));
    EXPECT_FALSE(isSameCriterion("rubbish", "other rubbish"));
}

// Every operator that a field offers takes the number of values that its controls can give.
TEST(Criterion, ValueCounts) {
    std::string counts;
    for (std::int32_t i = 0; i <= 34; ++i)
        counts += std::to_string(operatorValueCount(i));
    EXPECT_EQ(counts, "00000000000001112111001111111122000");
}

TEST(Criterion, OffersInTheOrderOfHabit) {
    const auto joined = [](std::span<const std::int32_t> ids) {
        std::string list;
        for (const std::int32_t id : ids)
            list += std::to_string(id) + " ";
        return list;
    };
    const std::string codes = "25 24 20 21 ";
    const std::vector<std::string> operators = {"",
                                                "17 18 19 20 21 ",
                                                "2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 20 21 ",
                                                "25 26 27 24 31 20 21 ",
                                                "25 26 27 24 28 29 30 20 21 ",
                                                codes,
                                                codes,
                                                codes,
                                                "32 33 ",
                                                codes};
    for (std::size_t type = 0; type < operators.size(); ++type)
        EXPECT_EQ(joined(offeredOperators(static_cast<ValueType>(type))), operators[type]) << type;
    EXPECT_EQ(joined(offeredCodes(2)) + joined(offeredCodes(7)) + joined(offeredCodes(15)),
              "6 7 8 9 10 11 12 13 14 15 16 17 1 2 3 4 5 ");
    EXPECT_TRUE(offeredCodes(25).empty());
}

TEST(Criterion, DisplayText) {
    modLanguage::SetLanguage(9, 0);
    platform::setLocale(platform::localeNamed("de"));
    const std::string joint = modLanguage::GetText(25117);
    const auto text = [](std::int32_t field, std::int32_t operatorId, const char* a,
                         const char* b) {
        return GetCriterionText(BuildCriteriaString(field, operatorId, a, b));
    };
    EXPECT_EQ(text(5, 17, "Müller", ""), "\"Author\" contains Müller");
    EXPECT_EQ(text(15, 25, "3", ""),
              "\"Priority\" " + GetOperatorText(25) + " " + modLanguage::GetText(25103));
    EXPECT_EQ(text(9, 16, "2026-11-21", "24.12.2026"),
              "\"Dictated\" " + GetOperatorText(16) + " 21.11.2026" + joint + "24.12.2026");
    EXPECT_EQ(text(9, 16, "soon", "24.12.2026"),
              "\"Dictated\" " + GetOperatorText(16) + " 24.12.2026");
    EXPECT_EQ(text(13, 31, "00:01:00", "00:02:00"),
              "\"Length\" " + GetOperatorText(31) + " 00:01:00" + joint + "00:02:00");
    EXPECT_EQ(text(3, 32, "", ""), "\"Marker\" " + GetOperatorText(32) + " ");
    EXPECT_EQ(GetCriterionText("rubbish"), GetSearchFieldCaption(0, true));
    EXPECT_EQ(GetOperatorText(0), "");
    EXPECT_EQ(GetOperatorText(34), "");
    platform::setLocale(std::nullopt);
}

} // namespace
} // namespace ov::modDictation
