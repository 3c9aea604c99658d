// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "dictation/typed_date.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>

namespace ov::modDictation {
namespace {

using platform::DateOrder;

// Typed on Saturday, 29 February 2020.
std::string meaning(std::string_view typed, DateOrder order) {
    platform::setLocale(platform::Locale{order, '/'});
    const auto day = readTypedDate(typed, {2020, 2, 29}, {"gestern", "heute", "Übermorgen"});
    platform::setLocale(std::nullopt);
    return day ? platform::formatIsoDate(*day) : "no day";
}

TEST(TypedDate, IsReadAsPeopleWriteDays) {
    const std::pair<const char*, const char*> everywhere[] = {
        {"gestern", "2020-02-28"},  {" HEUTE ", "2020-02-29"},   {"üBERMORGEN", "2020-03-01"},
        {"-7", "2020-02-22"},       {"+366", "2021-03-01"},      {"-0", "2020-02-29"},
        {"21.11.", "2020-11-21"},   {"1.3", "2020-03-01"},       {"29.2.", "2020-02-29"},
        {"21.11.26", "2026-11-21"}, {"2026-11-21", "2026-11-21"}};
    for (const auto& [typed, meant] : everywhere)
        for (const DateOrder order : {DateOrder::dayMonthYear, DateOrder::monthDayYear})
            EXPECT_EQ(meaning(typed, order), meant) << typed;
    const std::tuple<const char*, const char*, const char*> byCountry[] = {
        {"3/4/", "2020-04-03", "2020-03-04"},     {"3/4/26", "2026-04-03", "2026-03-04"},
        {"0304", "2020-04-03", "2020-03-04"},     {"030426", "2026-04-03", "2026-03-04"},
        {"03041999", "1999-04-03", "1999-03-04"}, {"21-11", "2020-11-21", "no day"}};
    for (const auto& [typed, meant, inAmerica] : byCountry) {
        EXPECT_EQ(meaning(typed, DateOrder::dayMonthYear), meant) << typed;
        EXPECT_EQ(meaning(typed, DateOrder::monthDayYear), inAmerica) << typed;
    }
    for (const char* typed : {"gester", "yesterday", "+", "--7", "+999999", "30.2.", "21.11./",
                              ".11.", "21..", "3004199", "7", ""})
        for (const DateOrder order : {DateOrder::dayMonthYear, DateOrder::monthDayYear})
            EXPECT_EQ(meaning(typed, order), "no day") << typed;
}

} // namespace
} // namespace ov::modDictation
