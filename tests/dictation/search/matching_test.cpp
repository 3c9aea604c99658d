// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "dictation/dictation_record.h"
#include "dictation/field_date.h"
#include "dictation/search/matching.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace ov::modDictation {
namespace {

// Saturday; the week of a German user began on Monday the 16th.
constexpr platform::DateTime today{2026, 11, 21, 12, 0, 0};

// "5|17|müller" for the field, the operator and the values.
Criterion criterion(std::string text) {
    text.append(static_cast<std::size_t>(3 - std::count(text.begin(), text.end(), '|')), '|');
    std::replace(text.begin(), text.end(), '|', criteriaSeparator);
    return ParseCriteriaString(text);
}

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
};

TEST_F(Matching, EachKindOfValue) {
    const std::string day = "2$@@7$24.12.2003";
    using Texts = std::vector<const char*>; // that hit, then that do not
    const std::tuple<std::string, Texts, Texts> cases[] = {
        {"2$@@14$Dr. MÜLLER-Straße@@11$",
         {"5|17|müller", "5|17|mu\u0308ller", "5|18|dr. müller-straße", "5|25|DR. MÜLLER-STRAßE",
          "5|19|meier", "5|1", "5|21"},
         {"5|17|strasse", "5|18|müller", "5|19|müller", "5|20", "5|26|müller", "5|22|Dr"}},
        {"2$@@14$mu\u0308ller", {"5|18|MÜLLER"}, {"5|24|MÜLLER"}},
        {"2$@@5$HOCH", {"1|17|ward3", "26|17|@@5$hoch"}, {"1|17|store"}},
        {"2$ROH", {"2|25|7"}, {"2|24|7", "2|25|"}},
        {"2$WAV", {"2|25|"}, {"2|24|6"}}, // which no value stands for
        {"2$FOO", {"2|24|7"}, {}},        // differs from all
        {"2$@@99$STOP", {"25|25|8"}, {"25|25|7"}},
        {"2$@@5$2", {"15|25|3"}, {"15|24|3", "15|25|2"}}, // the digit of HOCH
        {"2$@@5$NORMAL", {"15|25|"}, {}},
        {"2$@@17$5", {"7|25|12", "7|24|11"}, {"7|25|11", "7|24|12"}},
        {"2$@@17$512", {"7|18|19"}, {"7|18|18"}},
        {"2$@@17$1023", {}, {"7|25|20", "7|25|9"}}, // beyond the bits
        {"2$@@98$d", {"3|32"}, {"3|33"}},
        {"2$@@98$D", {"3|32"}, {"3|33"}},
        {"2$@@98$X", {"3|33"}, {"3|32", "3|18|X"}},
        {"2$@@6$00$02$00",
         {"13|25|00:02:00", "13|24|00:02:01", "13|26|00:02:00", "13|27|00:02:00",
          "13|31|00:02:00|00:03:00", "13|31|00:01:00|00:02:00"},
         {"13|26|00:01:59", "13|27|00:02:01", "13|31|00:03:00|00:01:00", "13|24|soon",
          "13|30|00:01:00|00:03:00", "13|24|00:02:00"}},
        {"2$@@6$00:02:00", {"13|18|0:02"}, {}},
        {"2$@@6$long", {}, {"13|24|00:02:00"}},
        {day,
         {"10|28|37978", "10|29|37980", "10|30|37979|37979", "11|19|x"},
         {"10|28|37979", "10|29|37979", "10|31|1|99999"}},
        {day + " 12$00$00", {"10|25|37980"}, {}}, // half rounds to even
        {day + " 17$05$00",
         {"9|13|24.12.2003", "9|13|2003-12-24", "9|14|24.12.2003", "9|15|24.12.2003",
          "9|16|24.12.2003|24.12.2003"},
         {"9|13|25.12.2003", "9|14|25.12.2003", "9|15|23.12.2003", "9|16|25.12.2003|23.12.2003",
          "9|16|24.12.2003", "9|16|soon|24.12.2003", "9|14|soon"}},
        {"2$@@7$16.11.2026 00$00$00", {"9|8"}, {"9|7"}},
        {"2$@@7$22.11.2026 23$59$59", {"9|8"}, {"9|9"}},
        {"2$@@7$soon", {"9|21"}, {"9|14|01.01.1900"}},
        {"2$@@7$37979.71", {"9|13|24.12.2003"}, {}},
        {"2$@@4$24-12-2003@@20$25.12.2003", {"16|13|24.12.2003", "11|13|25.12.2003"}, {}}};
    for (const auto& [name, hits, misses] : cases) {
        for (const char* text : hits)
            EXPECT_TRUE(match({criterion(text)}, name)) << text << " in " << name;
        for (const char* text : misses)
            EXPECT_FALSE(match({criterion(text)}, name)) << text << " in " << name;
    }
}

// What follows from the operator alone: the value is empty, or the name has no such field.
TEST_F(Matching, EmptyAndAbsentValues) {
    const std::set<std::int32_t> emptyMatches = {1, 19, 20, 24};
    const std::set<std::int32_t> absentMatches = {19, 20, 24, 33};
    for (const std::int32_t field : {2, 3, 5, 7, 9, 13, 15})
        for (std::int32_t operatorId = -1; operatorId <= 35; ++operatorId) {
            const std::string tag = fieldTag(fieldDefinition(field).dictationField);
            const std::vector<Criterion> criteria = {{field, operatorId, "1", "2"}};
            EXPECT_EQ(match(criteria, tag + "@@77$"), emptyMatches.contains(operatorId))
                << "empty, field " << field << ", operator " << operatorId;
            EXPECT_EQ(match(criteria, "@@77$"), absentMatches.contains(operatorId))
                << "absent, field " << field << ", operator " << operatorId;
        }
    EXPECT_TRUE(match({Criterion{}}, "2$ROH")) << "an unreadable criterion matches everything";
    EXPECT_FALSE(match({{0, 1, "", ""}}, "2$@@0$x")) << "but a field 0, which nothing writes";
    EXPECT_TRUE(match({{999, 20, "", ""}}, "2$")) << "a field that is not in the table is absent";
}

TEST_F(Matching, RelativeDates) {
    const auto days = [](std::int32_t operatorId, platform::DateTime now, int firstWeekday) {
        const NumberRange range = relativeDays(operatorId, now, firstWeekday);
        const auto text = [](std::int64_t day) {
            return platform::formatIsoDate(dateOf({static_cast<std::int32_t>(day), 0, false}));
        };
        return text(range.first) + ".." + text(range.last) + " ";
    };
    std::string all;
    for (std::int32_t operatorId = 2; operatorId <= 12; ++operatorId)
        all += days(operatorId, today, 1);
    EXPECT_EQ(all, "2026-11-20..2026-11-20 2026-11-21..2026-11-21 2026-11-22..2026-11-22 "
                   "2026-11-15..2026-11-21 2026-11-21..2026-11-27 2026-11-09..2026-11-15 "
                   "2026-11-16..2026-11-22 2026-11-23..2026-11-29 2026-10-01..2026-10-31 "
                   "2026-11-01..2026-11-30 2026-12-01..2026-12-31 ");
    constexpr platform::DateTime sunday{2026, 11, 22};
    EXPECT_EQ(days(8, sunday, 0) + days(8, sunday, 1) + days(8, sunday, 6),
              "2026-11-22..2026-11-28 2026-11-16..2026-11-22 2026-11-21..2026-11-27 ");
    EXPECT_EQ(days(10, {2027, 1, 31}, 1) + days(12, {2026, 12, 1}, 1) + days(12, {2028, 1, 31}, 1),
              "2026-12-01..2026-12-31 2027-01-01..2027-01-31 2028-02-01..2028-02-29 ");
}

// Criteria are joined in groups, of which each is one to the others, joined the other way.
bool matchesSlowly(const std::vector<Criterion>& criteria, const std::vector<bool>& single,
                   bool all) {
    std::vector<std::vector<bool>> groups;
    for (std::size_t i = 0; i < criteria.size(); ++i) {
        if (i == 0 || !criteria[i].indented)
            groups.emplace_back();
        groups.back().push_back(single[i]);
    }
    const auto joined = [](const auto& bits, bool allOf) {
        return allOf ? std::ranges::count(bits, false) == 0 : std::ranges::count(bits, true) > 0;
    };
    std::vector<bool> whole;
    for (const std::vector<bool>& group : groups)
        whole.push_back(joined(group, !all));
    return joined(whole, all);
}

TEST_F(Matching, GroupsAgreeWithAPlainReference) {
    std::mt19937 random(20261122);
    const auto below = [&random](std::size_t end) { return random() % end; };
    const std::vector<const char*> texts = {"5|17|a", "5|17|b", "5|17|c", "2|25|7", "20|21", "5|1"};
    for (int round = 0; round < 3000; ++round) {
        std::vector<Criterion> criteria(below(6));
        for (Criterion& one : criteria) {
            one = criterion(texts[below(texts.size())]);
            one.indented = below(2) == 0;
        }
        PreparedCriteria prepared(criteria, today);
        std::vector<std::int64_t> matched(criteria.size());
        for (int file = 0; file < 3; ++file) {
            std::string name = below(2) == 0 ? "2$ROH@@14$" : "2$WAV@@14$";
            for (const char letter : {'a', 'b', 'c'})
                name += below(2) == 0 ? std::string(1, letter) : "";
            std::vector<bool> single;
            for (std::size_t i = 0; i < criteria.size(); ++i) {
                single.push_back(match({criteria[i]}, name));
                matched[i] += single[i] ? 1 : 0;
            }
            EXPECT_EQ(MatchDictation("", name, prepared, true),
                      matchesSlowly(criteria, single, true))
                << round << " " << name;
            EXPECT_EQ(match(criteria, name, false), matchesSlowly(criteria, single, false))
                << round << " " << name;
        }
        EXPECT_EQ(prepared.matched(), matched) << "each alone, in a group or not";
    }
}

// Values are kept from one criterion to the next, but never to the next dictation.
TEST_F(Matching, ManyCriteriaAgreeWithSingleOnes) {
    std::vector<Criterion> criteria;
    for (const char* text :
         {"5|17|öztürk", "26|19|xyz", "15|25|3", "9|8", "13|27|0:01", "7|25|12", "1|17|ward",
          "18|21", "10|28|1", "16|14|2026-01-01", "3|33", "23|20", "2|25|7", "5|19|x", "2|24|6"})
        criteria.push_back(criterion(text));
    const std::vector<std::string> names = {
        "2$ROH@@14$Dr. Öztürk-Mühlenbrock von Hohenstein@@5$HOCH@@6$00$02$15@@17$5",
        "2$WAV@@14$" + std::string(120, 'x') + "@@7$20.11.2026 10$00$00@@11$Brief~~@@4$01.12.2026",
        "2$", "2$@@14$O\u0308ztu\u0308rk \u4E2D\u0301", std::string(250, '@')};
    PreparedCriteria prepared(criteria, today);
    const auto matchAll = [&] {
        std::string hits;
        for (const std::string& name : names) {
            prepared.start("\\store\\Ward3\\", name);
            for (std::size_t i = 0; i < criteria.size(); ++i)
                hits += prepared.matches(i) ? 'y' : 'n';
        }
        return hits;
    };
    std::string alone;
    for (const std::string& name : names)
        for (const Criterion& one : criteria)
            alone += match({one}, name) ? 'y' : 'n';
    EXPECT_EQ(matchAll(), alone);
    EXPECT_EQ(matchAll(), alone) << "again";
}

} // namespace
} // namespace ov::modDictation
