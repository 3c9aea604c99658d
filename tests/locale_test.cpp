// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "platform/locale.h"
#include "platform/process_locale.h"

#include <gtest/gtest.h>

#include <thread>
#include <utility>

namespace ov::platform {
namespace {

using namespace std::string_literals;

Locale german() {
    return {.dateOrder = DateOrder::dayMonthYear, .dateSeparator = '.', .decimalSign = ','};
}
Locale american() {
    return {};
}
Locale iso() {
    return {.dateOrder = DateOrder::yearMonthDay, .dateSeparator = '-'};
}

class LocaleTest : public ::testing::Test {
public:
    ~LocaleTest() override { setLocale({}); }
};

// The date as ISO text, empty for none.
std::string dateIn(const Locale& readIn, std::string_view text) {
    setLocale(readIn);
    const auto date = parseDate(text);
    setLocale(iso());
    return date ? formatShortDate(*date) : "";
}

TEST_F(LocaleTest, WritesDatesAndTimes) {
    const DateTime early{.year = 2026, .month = 3, .day = 5, .hour = 0, .minute = 7, .second = 9};
    const DateTime late{.year = 987, .month = 11, .day = 21, .hour = 12, .minute = 0, .second = 59};
    Locale czech = german();
    czech.dayTwoDigits = false;
    Locale twelve = american();
    twelve.twelveHours = true;
    twelve.am = "vorm.";
    const struct {
        Locale locale;
        const char* early = nullptr;
        const char* late = nullptr;
    } cases[] = {
        {german(), "05.03.2026 00:07:09", "21.11.0987 12:00:59"},
        {czech, "5.3.2026 00:07:09", "21.11.0987 12:00:59"},
        {iso(), "2026-03-05 00:07:09", "0987-11-21 12:00:59"},
        {twelve, "03/05/2026 12:07:09 vorm.", "11/21/0987 12:00:59 PM"},
    };
    for (const auto& tested : cases) {
        setLocale(tested.locale);
        const std::string written = formatShortDate(early);
        EXPECT_EQ(written + " " + formatLongTime(early), tested.early);
        EXPECT_EQ(formatShortDate(late) + " " + formatLongTime(late), tested.late);
        EXPECT_EQ(dateIn(tested.locale, written), "2026-03-05");
    }
}

TEST_F(LocaleTest, ReadsDates) {
    const struct {
        const char* text;
        const char* german;
        const char* american;
        const char* iso;
    } cases[] = {
        {"5.3.2026", "2026-03-05", "2026-05-03", ""},
        {"05/03/26", "2026-03-05", "2026-05-03", "2005-03-26"},
        {"26-11-21", "2021-11-26", "", "2026-11-21"},
        {"29.02.2024", "2024-02-29", "", ""},
        {"12.31.2026", "", "2026-12-31", ""},
        {"1.1.29", "2029-01-01", "2029-01-01", ""},
        {"1.1.30", "1930-01-01", "1930-01-01", ""},
        {" \t2026-11-21 ", "2026-11-21", "2026-11-21", "2026-11-21"},
        {"2026-2-3", "2026-02-03", "2026-02-03", "2026-02-03"},
        {"1.1.0100", "0100-01-01", "0100-01-01", ""},
        {"1.1.9999", "9999-01-01", "9999-01-01", ""},
    };
    for (const auto& tested : cases) {
        EXPECT_EQ(dateIn(german(), tested.text), tested.german) << tested.text;
        EXPECT_EQ(dateIn(american(), tested.text), tested.american) << tested.text;
        EXPECT_EQ(dateIn(iso(), tested.text), tested.iso) << tested.text;
    }
    for (const std::string& text : {""s,
                                    " "s,
                                    "."s,
                                    "..."s,
                                    "1.1"s,
                                    "1.1."s,
                                    ".1.2026"s,
                                    "1..2026"s,
                                    "1.1.2026.1"s,
                                    "1.1/2026"s,
                                    "1,1,2026"s,
                                    "1 . 1 . 2026"s,
                                    "1.1.6"s,
                                    "1.1.026"s,
                                    "1.1.20266"s,
                                    "99999999999.1.1"s,
                                    "1.1.99999999999"s,
                                    "001.1.2026"s,
                                    "0.1.2026"s,
                                    "1.0.2026"s,
                                    "1.13.2026"s,
                                    "32.1.2026"s,
                                    "29.2.2023"s,
                                    "1.1.0099"s,
                                    "-1.1.2026"s,
                                    "1/1/-0"s,
                                    "+1.1.2026"s,
                                    "1.1.0x20"s,
                                    "1.1.2026x"s,
                                    "1.1.2026\0"s,
                                    "\xFF.1.2026"s,
                                    "1.1.2026 17:00"s,
                                    "--2026"s,
                                    std::string(100000, '.')})
        EXPECT_EQ(dateIn(german(), text), "") << text.substr(0, 20);
}

TEST_F(LocaleTest, ReadsNumbers) {
    const struct {
        std::optional<double> german;
        std::optional<double> american;
        std::vector<const char*> texts;
    } cases[] = {
        {25, 25, {"25", " +25\t", "2500e-2"}},
        {2.5, {}, {"2,5", "0,25E+1"}},
        {{}, 2.5, {"2.5", "25.e-1"}},
        {{}, {}, {"", " ", "+", "-", "+-5", "--5", "5 5", "5x", "0x10", "1,5,5", "1.234,5"}},
        {{}, {}, {"inf", "nan", "1e", "e1", "1e999", "&H1"}},
    };
    for (const auto& tested : cases)
        for (const char* text : tested.texts) {
            setLocale(german());
            EXPECT_EQ(parseNumber(text), tested.german) << text;
            setLocale(american());
            EXPECT_EQ(parseNumber(text), tested.american) << text;
        }
}

TEST(ProcessLocale, DateFormats) {
    const struct {
        const char* format;
        DateOrder order;
        char separator;
        bool twoDigits;
    } cases[] = {
        {"%d.%m.%Y", DateOrder::dayMonthYear, '.', true},
        {"%m/%d/%Y", DateOrder::monthDayYear, '/', true},
        {"%D", DateOrder::monthDayYear, '/', true},
        {"%F", DateOrder::yearMonthDay, '-', true},
        {"%-d.%-m.%Y", DateOrder::dayMonthYear, '.', false},
        {"%e.%m.%Y", DateOrder::dayMonthYear, '.', false},
        {"%Oy/%Om/%Od", DateOrder::yearMonthDay, '/', true},
        {"%a, %d-%m-%y", DateOrder::dayMonthYear, '-', true},
        {"%b %d, %Y", DateOrder::monthDayYear, '/', true},
        {"", DateOrder::monthDayYear, '/', true},
        {"100%", DateOrder::monthDayYear, '/', true},
        {"%-", DateOrder::monthDayYear, '/', true},
    };
    for (const auto& tested : cases) {
        Locale result;
        readDateFormat(tested.format, result);
        EXPECT_EQ(result.dateOrder, tested.order) << tested.format;
        EXPECT_EQ(result.dateSeparator, tested.separator) << tested.format;
        EXPECT_EQ(result.dayTwoDigits, tested.twoDigits) << tested.format;
    }
}

TEST_F(LocaleTest, IsThatOfTheProcessUntilReplacedInAThread) {
    setLocale({}); // the tests run in the "C" locale
    EXPECT_EQ(locale().dateOrder, DateOrder::monthDayYear);
    EXPECT_EQ(locale().decimalSign, '.');
    EXPECT_EQ(locale().firstWeekday, 0);
    EXPECT_FALSE(locale().twelveHours);
    setLocale(german());
    char elsewhere = '\0';
    std::thread([&elsewhere] { elsewhere = locale().decimalSign; }).join();
    EXPECT_EQ(elsewhere, '.');
    EXPECT_EQ(locale().decimalSign, ',');
}

} // namespace
} // namespace ov::platform
