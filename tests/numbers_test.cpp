// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "support/numbers.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace ov {
namespace {

using namespace std::string_literals;

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr std::int32_t lowest = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t highest = std::numeric_limits<std::int32_t>::max();

TEST(Numbers, LeadingNumber) {
    const std::string zeros(400, '0');
    const struct {
        std::string text;
        double expected;
    } cases[] = {
        {"25", 25},
        {" \t-25", -25},
        {"+25abc", 25},
        {"7abc", 7},
        {"2.5.5", 2.5},
        {"2,5", 2},
        {"5.", 5},
        {".5", 0.5},
        {"-.5e1x", -5},
        {"1e3", 1000},
        {"1E+3", 1000},
        {"1e-3", 0.001},
        {"5.e2", 500},
        {"1e", 1},
        {"1e+", 1},
        {"1e+x", 1},
        {"0x10", 0},
        {"1 000", 1},
        {"1\0002"s, 1},
        {"", 0},
        {" ", 0},
        {"-", 0},
        {".", 0},
        {"-.", 0},
        {"e5", 0},
        {"- 5", 0},
        {"+-5", 0},
        {"&H1F", 0},
        {"inf", 0},
        {"nan", 0},
        {"\xEF\xBC\x95", 0},
        {"1" + zeros, infinity},
        {"-1" + zeros, -infinity},
        {"0." + zeros + "1", 0},
        {"0." + zeros + "1e5", 0},
        {"0." + zeros + "1e401", 1},
        {"1" + zeros + "e-50", infinity},
        {"1" + zeros + "e-400", 1},
        {zeros + "25", 25},
        {"0e999", 0},
        {"1e999", infinity},
        {"-1e999", -infinity},
        {"1e-999", 0},
        {"1e99999999999999999999", infinity},
        {"1e-99999999999999999999", 0},
    };
    for (const auto& tested : cases)
        EXPECT_EQ(leadingNumber(tested.text), tested.expected) << tested.text;
}

TEST(Numbers, LeadingInt32) {
    const std::pair<std::string, std::int32_t> cases[] = {
        {"0.5", 0},
        {"1.5", 2},
        {"2.5", 2},
        {"-0.5", 0},
        {"-1.5", -2},
        {"-2.5", -2},
        {"2.50001", 3},
        {"2147483646.5", 2147483646},
        {"2147483647", highest},
        {"2147483648", highest},
        {"-2147483648", lowest},
        {"-2147483649", lowest},
        {"1e10", highest},
        {std::string(400, '9'), highest},
        {"-" + std::string(400, '9'), lowest},
        {"0." + std::string(400, '0') + "1", 0},
        {"7abc", 7},
        {"", 0},
        {"nan", 0},
    };
    for (const auto& [text, expected] : cases)
        EXPECT_EQ(leadingInt32(text), expected) << text;
}

TEST(Numbers, Rounding) {
    EXPECT_EQ(roundToInt32(std::nan("")), 0);
    EXPECT_EQ(roundToInt32(infinity), highest);
    EXPECT_EQ(roundToInt32(-infinity), lowest);
    EXPECT_EQ(roundToInt32(-0.0), 0);
    EXPECT_EQ(roundToInt32(0.49999999999999994), 0);
}

TEST(Numbers, AllDigits) {
    for (const char* text : {"0", "007", "12345678901234567890"})
        EXPECT_TRUE(isAllDigits(text)) << text;
    for (const char* text : {"", " 1", "1 ", "-1", "1.0", "\xD9\xA1", "\xB2"})
        EXPECT_FALSE(isAllDigits(text)) << text;
}

} // namespace
} // namespace ov
