// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "platform/locale.h"
#include "platform/process_locale.h"

#include <gtest/gtest.h>

#include <limits>
#include <ostream>
#include <thread>

namespace ov::platform {

void PrintTo(const DateTime& date, std::ostream* out) {
    *out << date.year << '-' << date.month << '-' << date.day << ' ' << date.hour << ':'
         << date.minute << ':' << date.second;
}

namespace {

using Order = DateOrder;

Locale german() {
    return {.dateOrder = Order::dayMonthYear, .dateSeparator = '.', .decimalSign = ','};
}
Locale american() {
    return {};
}
Locale iso() {
    return {.dateOrder = Order::yearMonthDay, .dateSeparator = '-'};
}

class LocaleTest : public ::testing::Test {
public:
    ~LocaleTest() override { setLocale({}); }
};

TEST_F(LocaleTest, FormatsDatesAndTimes) {
    const DateTime early{.year = 2026, .month = 3, .day = 5, .hour = 0, .minute = 7, .second = 9};
    const DateTime late{.year = 987, .month = 11, .day = 21, .hour = 12, .minute = 0, .second = 59};
    Locale czech = german();
    czech.dayTwoDigits = false;
    Locale twelve = american();
    twelve.twelveHours = true;
    twelve.am = "vorm.";
    const struct {
        const char* name;
        Locale locale;
        const char* early;
        const char* late;
    } cases[] = {
        {"German", german(), "05.03.2026 00:07:09", "21.11.0987 12:00:59"},
        {"one digit", czech, "5.3.2026 00:07:09", "21.11.0987 12:00:59"},
        {"American", american(), "03/05/2026 00:07:09", "11/21/0987 12:00:59"},
        {"ISO", iso(), "2026-03-05 00:07:09", "0987-11-21 12:00:59"},
        {"twelve hours", twelve, "03/05/2026 12:07:09 vorm.", "11/21/0987 12:00:59 PM"},
    };
    for (const auto& tested : cases) {
        setLocale(tested.locale);
        EXPECT_EQ(formatShortDate(early) + " " + formatLongTime(early), tested.early)
            << tested.name;
        EXPECT_EQ(formatShortDate(late) + " " + formatLongTime(late), tested.late) << tested.name;
        const DateTime day{.year = 2026, .month = 3, .day = 5};
        EXPECT_EQ(parseDate(formatShortDate(early)), day) << tested.name;
    }
}

TEST_F(LocaleTest, ReadsDates) {
    const struct {
        const char* text;
        const char* german; // ISO, empty for none
        const char* american;
        const char* iso;
    } cases[] = {
        {"5.3.2026", "2026-03-05", "2026-05-03", ""},
        {"05/03/26", "2026-03-05", "2026-05-03", ""},
        {"05-03-26", "2026-03-05", "2026-05-03", ""},
        {"29.02.2024", "2024-02-29", "", ""},
        {"29.02.2023", "", "", ""},
        {"12.31.2026", "", "2026-12-31", ""},
        {"1.1.29", "2029-01-01", "2029-01-01", ""},
        {"1.1.30", "1930-01-01", "1930-01-01", ""},
        {"26-11-21", "", "", "2026-11-21"},
        {" \t2026-11-21 ", "2026-11-21", "2026-11-21", "2026-11-21"},
        {"2026-2-3", "2026-02-03", "2026-02-03", "2026-02-03"},
        {"1.1.0100", "0100-01-01", "0100-01-01", ""},
        {"1.1.0099", "", "", ""},
        {"1.1.9999", "9999-01-01", "9999-01-01", ""},
    };
    for (const auto& tested : cases) {
        const std::pair<Locale, const char*> readings[] = {
            {german(), tested.german}, {american(), tested.american}, {iso(), tested.iso}};
        for (const auto& [readIn, expected] : readings) {
            setLocale(readIn);
            const auto date = parseDate(tested.text);
            setLocale(iso());
            EXPECT_EQ(date ? formatShortDate(*date) : "", expected) << tested.text;
        }
    }
}

TEST_F(LocaleTest, WhatIsNoDate) {
    using namespace std::string_literals;
    setLocale(german());
    for (const std::string& text : {""s,
                                    " "s,
                                    "."s,
                                    ".."s,
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
                                    "1.99999999999.1"s,
                                    "1.1.99999999999"s,
                                    "001.1.2026"s,
                                    "0.1.2026"s,
                                    "1.0.2026"s,
                                    "1.13.2026"s,
                                    "32.1.2026"s,
                                    "-1.1.2026"s,
                                    "1.-1.2026"s,
                                    "1/1/-0"s,
                                    "1.1.-026"s,
                                    "+1.1.2026"s,
                                    "1.1.0x20"s,
                                    "1.1.2026x"s,
                                    "1.1.2026\0"s,
                                    "\xFF.1.2026"s,
                                    "1.1.2026 17:00"s,
                                    "2026-11-21T00"s,
                                    "--2026"s,
                                    std::string(100000, '.')})
        EXPECT_FALSE(parseDate(text)) << text.substr(0, 20);
}

TEST_F(LocaleTest, ReadsNumbers) {
    const struct {
        const char* text;
        std::optional<double> german;
        std::optional<double> american;
    } cases[] = {
        {"25", 25, 25},      {"  -25\t", -25, -25}, {"+25", 25, 25},     {"2,5", 2.5, {}},
        {"2.5", {}, 2.5},    {",5", 0.5, {}},       {"1e3", 1000, 1000}, {"1,5E-1", 0.15, {}},
        {"1,5,5", {}, {}},   {"", {}, {}},          {"+", {}, {}},       {"+-5", {}, {}},
        {"--5", {}, {}},     {"5 5", {}, {}},       {"5x", {}, {}},      {"0x10", {}, {}},
        {"inf", {}, {}},     {"nan", {}, {}},       {"1e", {}, {}},      {"1e999", {}, {}},
        {"1.234,5", {}, {}},
    };
    for (const auto& tested : cases) {
        setLocale(german());
        EXPECT_EQ(parseNumber(tested.text), tested.german) << tested.text;
        setLocale(american());
        EXPECT_EQ(parseNumber(tested.text), tested.american) << tested.text;
    }
}

TEST(ProcessLocale, DateFormats) {
    const struct {
        const char* format;
        Order order;
        char separator;
        bool twoDigits;
    } cases[] = {
        {"%d.%m.%Y", Order::dayMonthYear, '.', true},
        {"%m/%d/%Y", Order::monthDayYear, '/', true},
        {"%D", Order::monthDayYear, '/', true},
        {"%F", Order::yearMonthDay, '-', true},
        {"%-d.%-m.%Y", Order::dayMonthYear, '.', false},
        {"%e.%m.%Y", Order::dayMonthYear, '.', false},
        {"%Oy/%Om/%Od", Order::yearMonthDay, '/', true},
        {"%a, %d-%m-%y", Order::dayMonthYear, '-', true},
        {"%b %d, %Y", Order::monthDayYear, '/', true},
        {"%Y\xE5\xB9\xB4%m\xE6\x9C\x88%d", Order::yearMonthDay, '/', true},
        {"", Order::monthDayYear, '/', true},
        {"%", Order::monthDayYear, '/', true},
        {"%-", Order::monthDayYear, '/', true},
        {"100%", Order::monthDayYear, '/', true},
    };
    for (const auto& tested : cases) {
        Locale result;
        readDateFormat(tested.format, result);
        EXPECT_EQ(result.dateOrder, tested.order) << tested.format;
        EXPECT_EQ(result.dateSeparator, tested.separator) << tested.format;
        EXPECT_EQ(result.dayTwoDigits, tested.twoDigits) << tested.format;
    }
}

TEST_F(LocaleTest, IsThatOfTheProcessUntilReplacedAndKeptPerThread) {
    setLocale({}); // the tests run in the "C" locale
    EXPECT_EQ(locale().dateOrder, Order::monthDayYear);
    EXPECT_EQ(locale().decimalSign, '.');
    EXPECT_EQ(locale().firstWeekday, 0);
    EXPECT_FALSE(locale().twelveHours);
    setLocale(german());
    Order elsewhere{};
    std::thread([&elsewhere] { elsewhere = locale().dateOrder; }).join();
    EXPECT_EQ(elsewhere, Order::monthDayYear);
    EXPECT_EQ(locale().dateOrder, Order::dayMonthYear);
}

TEST_F(LocaleTest, NowIsADate) {
    setLocale(iso());
    const DateTime today = now();
    EXPECT_TRUE(parseDate(formatShortDate(today)));
    EXPECT_GE(today.year, 2025);
}

} // namespace
} // namespace ov::platform
