// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "platform/locale.h"
#include "tests/environment.h"

#include <gtest/gtest.h>

#include <array>
#include <ctime>

namespace ov::platform {
namespace {

class LocaleTest : public ::testing::Test {
public:
    ~LocaleTest() override { setLocale({}); }
};

TEST_F(LocaleTest, FollowsTheNameWithoutAnInstalledLocale) {
    const DateTime evening{2026, 3, 5, 17, 7, 9};
    const DateTime midnight{987, 11, 21, 0, 0, 59};
    const std::tuple<const char*, const char*, const char*, char, int> cases[] = {
        {"de_DE.UTF-8", "05.03.2026 17:07:09", "21.11.0987 00:00:59", ',', 1},
        {"de_AT@euro", "05.03.2026 17:07:09", "21.11.0987 00:00:59", ',', 1},
        {"en_GB", "05/03/2026 17:07:09", "21/11/0987 00:00:59", '.', 1},
        {"en_US.utf8", "3/5/2026 05:07:09 PM", "11/21/0987 12:00:59 AM", '.', 0},
        {"sv_SE", "2026-03-05 17:07:09", "0987-11-21 00:00:59", ',', 1},
        {"fi_FI", "5.3.2026 17:07:09", "21.11.0987 00:00:59", ',', 1},
        {"fa_IR", "2026/3/5 17:07:09", "0987/11/21 00:00:59", '.', 6},
        {"el_GR", "5/3/2026 05:07:09 μ.μ.", "21/11/0987 12:00:59 π.μ.", ',', 1},
        {"C.UTF-8", "03/05/2026 17:07:09", "11/21/0987 00:00:59", '.', 0}};
    for (const auto& [name, inTheEvening, atMidnight, decimalSign, firstWeekday] : cases) {
        SCOPED_TRACE(name);
        const Locale own = localeNamed(name);
        setLocale(own);
        EXPECT_EQ(formatShortDate(evening) + " " + formatLongTime(evening), inTheEvening);
        EXPECT_EQ(formatShortDate(midnight) + " " + formatLongTime(midnight), atMidnight);
        EXPECT_EQ(own.decimalSign, decimalSign);
        EXPECT_NE(own.groupSign, std::string(1, decimalSign));
        EXPECT_EQ(own.firstWeekday, firstWeekday);
        for (const std::string& written : {formatShortDate(evening), formatIsoDate(evening)})
            EXPECT_EQ(parseDate(written), (DateTime{2026, 3, 5})) << written;
    }
}

// The date as ISO text, empty for none.
std::string dateIn(const char* locale, std::string_view text) {
    setLocale(localeNamed(locale));
    const auto date = parseDate(text);
    return date ? formatIsoDate(*date) : "";
}

TEST_F(LocaleTest, TellsTheTimeOfThePlace) {
    {
        const tests::Environment place("TZ", "XYZ-5:45");
        tzset();
        EXPECT_EQ(localTime(1'772'687'229'999'999'999), (DateTime{2026, 3, 5, 10, 52, 9}));
    }
    tzset();
}

TEST_F(LocaleTest, ReadsDates) {
    // As written, in German, American and Swedish.
    const std::array<const char*, 4> cases[] = {
        {"5.3.2026", "2026-03-05", "2026-03-05", "2026-03-05"}, // points are day first anywhere
        {"12.31.2026", "", "", ""},
        {"05/03/26", "2026-03-05", "2026-05-03", "2005-03-26"},
        {"12/31/2026", "", "2026-12-31", ""},
        {"26-11-21", "2021-11-26", "", "2026-11-21"},
        {"1.1.29", "2029-01-01", "2029-01-01", "2029-01-01"},
        {"1.1.30", "1930-01-01", "1930-01-01", "1930-01-01"},
        {" \t2026-11-21 ", "2026-11-21", "2026-11-21", "2026-11-21"},
        {"1.1.0100", "0100-01-01", "0100-01-01", "0100-01-01"},
        {"31.12.9999", "9999-12-31", "9999-12-31", "9999-12-31"}};
    for (const auto& [text, german, american, swedish] : cases) {
        EXPECT_EQ(dateIn("de", text), german) << text;
        EXPECT_EQ(dateIn("en_US", text), american) << text;
        EXPECT_EQ(dateIn("sv", text), swedish) << text;
    }
    // Wrong are the pieces, the separators, the digits, the calendar, the signs, the rest.
    const std::vector<const char*> noDates[] = {
        {"", ".", "...", "1.1", "1.1.", ".1.2026", "1..2026", "1.1.2026.1"},
        {"1.1/2026", "1,1,2026", "1 . 1 . 2026"},
        {"1.1.6", "1.1.026", "1.1.20266", "001.1.2026", "1.001.2026"},
        {"0.1.2026", "1.0.2026", "1.13.2026", "32.1.2026", "29.2.2023", "1.1.0099"},
        {"-1.1.2026", "1/1/-0", "+1.1.2026", "--2026"},
        {"1.1.2026x", "1.1.2026 17:00", "99999999999.1.1"}};
    for (const auto& texts : noDates)
        for (const char* text : texts)
            EXPECT_EQ(dateIn("de", text), "") << text;
}

TEST_F(LocaleTest, ReadsNumbers) {
    using Number = std::optional<double>; // in German, American
    const std::tuple<Number, Number, std::vector<const char*>> cases[] = {
        {25, 25, {"25", " +25\t", "2500e-2"}},
        {2.5, {}, {"2,5", "0,25E+1"}},
        {{}, 2.5, {"2.5", "25.e-1"}},
        {{}, {}, {"", " ", "+", "-", "+-5", "--5", "5 5", "5x", "0x10", "1,5,5", "1.234,5"}},
        {{}, {}, {"inf", "nan", "1e", "e1", "1e999", "&H1"}}};
    for (const auto& [german, american, texts] : cases)
        for (const char* text : texts) {
            setLocale(localeNamed("de"));
            EXPECT_EQ(parseNumber(text), german) << text;
            setLocale(localeNamed("en_US"));
            EXPECT_EQ(parseNumber(text), american) << text;
        }
}

} // namespace
} // namespace ov::platform
