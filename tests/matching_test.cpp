// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "allocation_fixture.h"
#include "dictation/dictation_record.h"
#include "dictation/field_date.h"
#include "dictation/search/matching.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace ov::modDictation {
namespace {

// Saturday; the week of a German user began on Monday the 16th.
constexpr platform::DateTime today{2026, 11, 21, 12, 0, 0};

struct MatchCase {
    const char* what;
    Criterion criterion;
    std::string name;
    bool hit;
};

class Matching : public ::testing::Test {
public:
    Matching() { platform::setLocale(platform::localeNamed("de")); }
    ~Matching() override { platform::setLocale(std::nullopt); }

protected:
    static bool match(const std::vector<Criterion>& criteria, const std::string& name,
                      bool compareAnd = true) {
        PreparedCriteria prepared(criteria, today);
        return MatchDictation("\\store\\Ward3\\", name, prepared, compareAnd);
    }
    static void expectAll(const std::vector<MatchCase>& cases) {
        for (const MatchCase& c : cases)
            EXPECT_EQ(match({c.criterion}, c.name), c.hit)
                << c.what << ": field " << c.criterion.Field << ", operator "
                << c.criterion.Operator << ", " << c.name;
    }
};

TEST_F(Matching, Text) {
    const std::string name = "2$@@14$Dr. MÜLLER-Straße@@11$";
    expectAll({
        {"contains, other case, umlaut", {5, 17, "müller", ""}, name, true},
        {"umlaut typed as two characters", {5, 17, "mu\u0308ller", ""}, name, true},
        {"umlaut stored as two", {5, 18, "MÜLLER", ""}, "2$@@14$mu\u0308ller", true},
        {"sharp s is not two s", {5, 17, "strasse", ""}, name, false},
        {"is", {5, 18, "dr. müller-straße", ""}, name, true},
        {"is only a part", {5, 18, "müller", ""}, name, false},
        {"equal works like is", {5, 25, "DR. MÜLLER-STRAßE", ""}, name, true},
        {"contains not", {5, 19, "meier", ""}, name, true},
        {"contains not, but does", {5, 19, "müller", ""}, name, false},
        {"any", {5, 1, "", ""}, name, true},
        {"is empty, but is not", {5, 20, "", ""}, name, false},
        {"is not empty", {5, 21, "", ""}, name, true},
        {"a number's operator", {5, 26, "müller", ""}, name, false},
        {"begins with is offered nowhere", {5, 22, "Dr", ""}, name, false},
        {"folder", {1, 17, "ward3", ""}, "2$", true},
        {"whole name", {26, 17, "@@5$hoch", ""}, "2$@@5$HOCH", true},
    });
}

// What follows from the operator alone: the value is empty, or the name has no such field.
TEST_F(Matching, EmptyAndAbsentValues) {
    const std::vector<std::int32_t> emptyMatches = {1, 19, 20, 24};
    const std::vector<std::int32_t> absentMatches = {19, 20, 24, 33};
    const auto holds = [](const std::vector<std::int32_t>& list, std::int32_t operatorId) {
        return std::find(list.begin(), list.end(), operatorId) != list.end();
    };
    for (const std::int32_t field : {2, 3, 5, 7, 9, 13, 15})
        for (std::int32_t operatorId = -1; operatorId <= 35; ++operatorId) {
            const std::string tag = fieldTag(fieldDefinition(field).dictationField);
            const std::vector<Criterion> criteria = {{field, operatorId, "1", "2"}};
            EXPECT_EQ(match(criteria, tag + "@@77$"), holds(emptyMatches, operatorId))
                << "empty, field " << field << ", operator " << operatorId;
            EXPECT_EQ(match(criteria, "@@77$"), holds(absentMatches, operatorId))
                << "absent, field " << field << ", operator " << operatorId;
        }
    EXPECT_TRUE(match({Criterion{}}, "2$ROH")) << "an unreadable criterion matches everything";
    EXPECT_FALSE(match({{0, 1, "", ""}}, "2$@@0$x")) << "but a field 0, which nothing writes";
    EXPECT_TRUE(match({{999, 20, "", ""}}, "2$")) << "a field that is not in the table is absent";
}

TEST_F(Matching, Codes) {
    expectAll({
        {"status", {2, 25, "7", ""}, "2$ROH", true},
        {"status differs, but does not", {2, 24, "7", ""}, "2$ROH", false},
        {"no value stands for WAV", {2, 25, "", ""}, "2$WAV", true},
        {"and differs from all", {2, 24, "7", ""}, "2$FOO", true},
        {"second status", {25, 25, "8", ""}, "2$@@99$STOP", true},
        {"the digit 2 is HOCH", {15, 25, "3", ""}, "2$@@5$2", true},
        {"no value stands for NORMAL", {15, 25, "", ""}, "2$@@5$NORMAL", true},
        {"priority differs, but does not", {15, 24, "3", ""}, "2$@@5$2", false},
        {"bit set", {7, 25, "12", ""}, "2$@@17$5", true},
        {"bit not set", {7, 25, "11", ""}, "2$@@17$5", false},
        {"bit wanted unset", {7, 24, "11", ""}, "2$@@17$5", true},
        {"bit wanted unset, but set", {7, 24, "12", ""}, "2$@@17$5", false},
        {"bit 512", {7, 18, "19", ""}, "2$@@17$512", true},
        {"a code beyond the bits", {7, 25, "20", ""}, "2$@@17$1023", false},
        {"a code below", {7, 25, "9", ""}, "2$@@17$1023", false},
        {"marked", {3, 32, "", ""}, "2$@@98$d", true},
        {"marked by another letter", {3, 32, "", ""}, "2$@@98$X", false},
        {"not marked", {3, 33, "", ""}, "2$@@98$X", true},
        {"not marked, but is", {3, 33, "", ""}, "2$@@98$D", false},
        {"an operator of texts", {3, 18, "X", ""}, "2$@@98$X", false},
    });
}

TEST_F(Matching, TimesAndNumbers) {
    const std::string two = "2$@@6$00$02$00";
    expectAll({
        {"equal", {13, 25, "00:02:00", ""}, two, true},
        {"is", {13, 18, "0:02", ""}, "2$@@6$00:02:00", true},
        {"not equal", {13, 24, "00:02:01", ""}, two, true},
        {"at most", {13, 26, "00:02:00", ""}, two, true},
        {"at most, less", {13, 26, "00:01:59", ""}, two, false},
        {"at least", {13, 27, "00:02:00", ""}, two, true},
        {"at least, more", {13, 27, "00:02:01", ""}, two, false},
        {"range, low end", {13, 31, "00:02:00", "00:03:00"}, two, true},
        {"range, high end", {13, 31, "00:01:00", "00:02:00"}, two, true},
        {"range turned round", {13, 31, "00:03:00", "00:01:00"}, two, false},
        {"a number's range", {13, 30, "00:01:00", "00:03:00"}, two, false},
        {"no time satisfies nothing", {13, 24, "00:02:00", ""}, "2$@@6$long", false},
        {"no time in the criterion", {13, 24, "soon", ""}, two, false},
        {"number more than", {10, 28, "37978", ""}, "2$@@7$24.12.2003", true},
        {"number more than itself", {10, 28, "37979", ""}, "2$@@7$24.12.2003", false},
        {"number less than the next", {10, 29, "37980", ""}, "2$@@7$24.12.2003", true},
        {"number less than", {10, 29, "37979", ""}, "2$@@7$24.12.2003", false},
        {"number range", {10, 30, "37979", "37979"}, "2$@@7$24.12.2003", true},
        {"rounds half to even", {10, 25, "37980", ""}, "2$@@7$24.12.2003 12$00$00", true},
        {"a time's range", {10, 31, "1", "99999"}, "2$@@7$24.12.2003", false},
    });
}

TEST_F(Matching, RelativeDates) {
    constexpr platform::DateTime sunday{2026, 11, 22};
    constexpr int onMonday = 1;
    const auto days = [](std::int32_t operatorId, platform::DateTime now, int firstWeekday) {
        const NumberRange range = relativeDays(operatorId, now, firstWeekday);
        const auto text = [](std::int64_t day) {
            return platform::formatShortDate(dateOf({static_cast<std::int32_t>(day), 0, false}));
        };
        return text(range.first) + "-" + text(range.last);
    };
    EXPECT_EQ(days(2, today, onMonday), "20.11.2026-20.11.2026");
    EXPECT_EQ(days(3, today, onMonday), "21.11.2026-21.11.2026");
    EXPECT_EQ(days(4, today, onMonday), "22.11.2026-22.11.2026");
    EXPECT_EQ(days(5, today, onMonday), "15.11.2026-21.11.2026");
    EXPECT_EQ(days(6, today, onMonday), "21.11.2026-27.11.2026");
    EXPECT_EQ(days(7, today, onMonday), "09.11.2026-15.11.2026");
    EXPECT_EQ(days(8, today, onMonday), "16.11.2026-22.11.2026");
    EXPECT_EQ(days(9, today, onMonday), "23.11.2026-29.11.2026");
    EXPECT_EQ(days(10, today, onMonday), "01.10.2026-31.10.2026");
    EXPECT_EQ(days(11, today, onMonday), "01.11.2026-30.11.2026");
    EXPECT_EQ(days(12, today, onMonday), "01.12.2026-31.12.2026");
    EXPECT_EQ(days(8, sunday, 0), "22.11.2026-28.11.2026");
    EXPECT_EQ(days(8, sunday, onMonday), "16.11.2026-22.11.2026");
    EXPECT_EQ(days(8, sunday, 6), "21.11.2026-27.11.2026");
    EXPECT_EQ(days(10, {2027, 1, 31}, onMonday), "01.12.2026-31.12.2026");
    EXPECT_EQ(days(12, {2026, 12, 1}, onMonday), "01.01.2027-31.01.2027");
    EXPECT_EQ(days(12, {2028, 1, 31}, onMonday), "01.02.2028-29.02.2028");
}

TEST_F(Matching, ChosenDates) {
    const std::string dictated = "2$@@7$24.12.2003 17$05$00";
    expectAll({
        {"this week, a Monday", {9, 8, "", ""}, "2$@@7$16.11.2026 00$00$00", true},
        {"this week, its Sunday", {9, 8, "", ""}, "2$@@7$22.11.2026 23$59$59", true},
        {"on", {9, 13, "24.12.2003", ""}, dictated, true},
        {"on, written as ISO", {9, 13, "2003-12-24", ""}, dictated, true},
        {"on another day", {9, 13, "25.12.2003", ""}, dictated, false},
        {"on or after", {9, 14, "24.12.2003", ""}, dictated, true},
        {"on or after the next day", {9, 14, "25.12.2003", ""}, dictated, false},
        {"on or before", {9, 15, "24.12.2003", ""}, dictated, true},
        {"on or before the day before", {9, 15, "23.12.2003", ""}, dictated, false},
        {"between, both ends", {9, 16, "24.12.2003", "24.12.2003"}, dictated, true},
        {"between, turned round", {9, 16, "25.12.2003", "23.12.2003"}, dictated, false},
        {"between, one end missing", {9, 16, "24.12.2003", ""}, dictated, false},
        {"no date in the criterion", {9, 14, "soon", ""}, dictated, false},
        {"no date in the name", {9, 14, "01.01.1900", ""}, "2$@@7$soon", false},
        {"a serial in the name", {9, 13, "24.12.2003", ""}, "2$@@7$37979.71", true},
        {"due", {16, 13, "24.12.2003", ""}, "2$@@4$24-12-2003", true},
        {"changed", {11, 13, "24.12.2003", ""}, "2$@@20$24.12.2003", true},
        {"is not empty though no date", {9, 21, "", ""}, "2$@@7$soon", true},
    });
}

TEST_F(Matching, AndOr) {
    const Criterion yes{2, 25, "7", ""};
    const Criterion no{2, 25, "8", ""};
    const std::string name = "2$ROH";
    EXPECT_TRUE(match({}, name, true));
    EXPECT_FALSE(match({}, name, false));
    EXPECT_TRUE(match({yes, yes}, name, true));
    EXPECT_FALSE(match({yes, no}, name, true));
    EXPECT_TRUE(match({no, yes}, name, false));
    EXPECT_FALSE(match({no, no}, name, false));
}

// Values are kept from one criterion to the next, but never to the next dictation.
TEST_F(Matching, ManyCriteriaAgreeWithSingleOnesAndAllocateNothingOnceWarm) {
    const std::vector<Criterion> criteria = {
        {5, 17, "öztürk", ""}, {26, 19, "xyz", ""},        {15, 25, "3", ""},   {9, 8, "", ""},
        {13, 27, "0:01", ""},  {7, 25, "12", ""},          {1, 17, "ward", ""}, {18, 21, "", ""},
        {10, 28, "1", ""},     {16, 14, "2026-01-01", ""}, {3, 33, "", ""},     {23, 20, "", ""},
        {2, 25, "7", ""},      {5, 19, "x", ""},           {2, 24, "6", ""}};
    const std::vector<std::string> names = {
        "2$ROH@@14$Dr. Öztürk-Mühlenbrock von Hohenstein@@5$HOCH@@6$00$02$15@@17$5",
        "2$WAV@@14$" + std::string(120, 'x') + "@@7$20.11.2026 10$00$00@@11$Brief~~@@4$01.12.2026",
        "2$", "2$@@14$O\u0308ztu\u0308rk \u4E2D\u0301", std::string(250, '@')};
    PreparedCriteria prepared(criteria, today);
    const auto matchAll = [&] {
        std::string hits;
        hits.reserve(names.size() * criteria.size());
        for (const std::string& name : names) {
            prepared.start("\\store\\Ward3\\", name);
            for (std::size_t i = 0; i < criteria.size(); ++i)
                hits += prepared.matches(i) ? 'y' : 'n';
        }
        return hits;
    };
    std::string alone;
    for (const std::string& name : names)
        for (const Criterion& criterion : criteria)
            alone += match({criterion}, name) ? 'y' : 'n';
    EXPECT_EQ(matchAll(), alone);
    const std::size_t before = tests::allocationCount();
    matchAll();
    EXPECT_EQ(tests::allocationCount(), before + 1) << "the text of hits";
}

} // namespace
} // namespace ov::modDictation
