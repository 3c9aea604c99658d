// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "dictation/typed_date.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

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
    struct Case {
        std::string typed;
        std::string meant;
        std::string inAmerica;
    };
    const std::string no = "no day";
    const std::vector<Case> cases = {
        {"gestern", "2020-02-28", "2020-02-28"},
        {" HEUTE ", "2020-02-29", "2020-02-29"},
        {"üBERMORGEN", "2020-03-01", "2020-03-01"},
        {"gester", no, no},
        {"yesterday", no, no},
        {"-7", "2020-02-22", "2020-02-22"},
        {"+366", "2021-03-01", "2021-03-01"},
        {"-0", "2020-02-29", "2020-02-29"},
        {"+", no, no},
        {"--7", no, no},
        {"+999999", no, no},
        {"21.11.", "2020-11-21", "2020-11-21"},
        {"1.3", "2020-03-01", "2020-03-01"},
        {"3/4/", "2020-04-03", "2020-03-04"},
        {"21-11", "2020-11-21", no},
        {"29.2.", "2020-02-29", "2020-02-29"},
        {"30.2.", no, no},
        {"21.11./", no, no},
        {".11.", no, no},
        {"21..", no, no},
        {"21.11.26", "2026-11-21", "2026-11-21"},
        {"3/4/26", "2026-04-03", "2026-03-04"},
        {"2026-11-21", "2026-11-21", "2026-11-21"},
        {"0304", "2020-04-03", "2020-03-04"},
        {"030426", "2026-04-03", "2026-03-04"},
        {"03041999", "1999-04-03", "1999-03-04"},
        {"3004199", no, no},
        {"7", no, no},
        {"", no, no},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(meaning(c.typed, DateOrder::dayMonthYear), c.meant) << c.typed;
        EXPECT_EQ(meaning(c.typed, DateOrder::monthDayYear), c.inAmerica) << c.typed;
    }
}

} // namespace
} // namespace ov::modDictation
