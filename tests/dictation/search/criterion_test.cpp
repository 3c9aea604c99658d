// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "dictation/field_table.h"
#include "dictation/search/criterion.h"
#include "platform/locale.h"
#include "support/language/modLanguage.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace ov::modDictation {
namespace {

// "5|17|x|" as it is stored.
std::string stored(std::string text) {
    std::replace(text.begin(), text.end(), '|', criteriaSeparator);
    return text;
}

std::string stored(const Criterion& c) {
    return BuildCriteriaString(c.Field, c.Operator, c.Value1, c.Value2);
}

TEST(Criterion, TextForm) {
    EXPECT_EQ(BuildCriteriaString(15, 25, "3", "4"), stored("15|25|3|4"));
    for (const char* text : {"", "5", "5|17|x", "5|17|x|y|z"})
        EXPECT_EQ(ParseCriteriaString(stored(text)), Criterion{}) << text;
    const std::pair<const char*, Criterion> cases[] = {
        {"12abc|17|Müller \"x\"|b", {12, 17, "Müller \"x\"", "b"}},
        {"| 7||", {0, 7, "", ""}},
        {"x|-3||", {0, -3, "", ""}},
        {"2.5|3.5||", {2, 4, "", ""}},
        {"1e1|99999999999||", {10, 2147483647, "", ""}}};
    for (const auto& [text, criterion] : cases)
        EXPECT_EQ(ParseCriteriaString(stored(text)), criterion) << text;
}

TEST(Criterion, LinesOfAFile) {
    const CriteriaLines lines = readCriteriaLines(stored("5|17|M\xFCller|\r\n\r\nrubbish\n2|20||"));
    EXPECT_EQ(lines.criteria, (std::vector<std::string>{stored("5|17|Müller|"), stored("2|20||")}));
    EXPECT_EQ(lines.skipped, 1U);
    EXPECT_EQ(readCriteriaLines(stored("\uFEFF5|17|x|")).criteria.at(0), stored("5|17|x|"))
        << "a byte-order mark";
}

TEST(Criterion, SameQuestion) {
    const auto same = [](const Criterion& a, const Criterion& b) {
        return isSameCriterion(stored(a), stored(b));
    };
    EXPECT_TRUE(same({5, 17, "Müller", ""}, {5, 17, "mu\u0308LLER", ""}));
    EXPECT_TRUE(same({9, 16, "21.11.2026", "2026-12-24"}, {9, 16, "2026-11-21", "24.12.2026"}));
    EXPECT_FALSE(same({9, 16, "21.11.2026", "2026-12-24"}, {9, 16, "2026-11-21", "2026-12-23"}));
    EXPECT_FALSE(same({9, 13, "soon", ""}, {9, 13, "later", ""}));
    EXPECT_FALSE(same({5, 17, "x", ""}, {5, 19, "x", ""}));
    EXPECT_FALSE(same({4, 17, "x", ""}, {5, 17, "x", ""}));
    EXPECT_FALSE(isSameCriterion("rubbish", "other rubbish"));
}

TEST(Criterion, DisplayText) {
    modLanguage::SetLanguage(9, 0);
    platform::setLocale(platform::localeNamed("de"));
    const std::pair<const char*, const char*> cases[] = {
        {"5|17|Müller|", "\"Author\" contains Müller"},
        {"15|25|3|", "\"Priority\" is High"},
        {"9|16|2026-11-21|24.12.2026", "\"Dictated\" is between 21.11.2026 and 24.12.2026"},
        {"9|16|soon|24.12.2026", "\"Dictated\" is between 24.12.2026"},
        {"13|31|00:01:00|00:02:00", "\"Length\" is between 00:01:00 and 00:02:00"},
        {"3|33||", "\"Marker\" is not set "},
        {"rubbish", "(no field)"}};
    for (const auto& [criterion, text] : cases)
        EXPECT_EQ(GetCriterionText(stored(criterion)), text);
    EXPECT_EQ(GetOperatorText(1) + GetOperatorText(0) + GetOperatorText(34), "is anything");
    platform::setLocale(std::nullopt);
}

} // namespace
} // namespace ov::modDictation
