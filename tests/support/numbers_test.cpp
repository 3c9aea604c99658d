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

TEST(Numbers, AtTheStartOfAText) {
    const std::string zeros(400, '0');
    const std::pair<double, std::vector<std::string>> cases[] = {
        {25, {"25", " \t25 x", "+25abc", "25.", "25.0.1", "25e", "25e+x", "2.5e1", zeros + "25"}},
        {-0.5, {"-.5", "-0.5,", "-5e-1", "-5.E-1"}},
        {1, {"1,5", "1 000", "1\0002"s, "1" + zeros + "e-400", "0." + zeros + "1e401"}},
        {0, {"", " ", "-", ".", "-.", "e5", "- 5", "+-5", "\xEF\xBC\x95", "&H1F", "inf", "nan"}},
        {0, {"0x10", "0e999", "1e-99999999999999999999", "0." + zeros + "1e5"}},
        {infinity, {"1" + zeros, "1e999", "1e99999999999999999999", "1" + zeros + "e-50"}},
        {-infinity, {"-1" + zeros, "-1e999"}},
    };
    for (const auto& [expected, texts] : cases)
        for (const std::string& text : texts)
            EXPECT_EQ(leadingNumber(text), expected) << text;
}

TEST(Numbers, RoundHalfToEvenAndSaturate) {
    const std::pair<std::int32_t, std::vector<std::string>> cases[] = {
        {0, {"0.5", "-0.5", "", "nan", "0." + std::string(400, '0') + "1"}},
        {2, {"1.5", "2.5", "2.4999"}},
        {-2, {"-1.5", "-2.5"}},
        {3, {"2.50001", "3abc"}},
        {2147483646, {"2147483646", "2147483646.5", "2147483645.5"}},
        {highest, {"2147483647", "2147483648", "1e10", std::string(400, '9')}},
        {lowest, {"-2147483648", "-2147483649", "-" + std::string(400, '9')}},
    };
    for (const auto& [expected, texts] : cases)
        for (const std::string& text : texts)
            EXPECT_EQ(leadingInt32(text), expected) << text;
    EXPECT_EQ(roundToInt32(std::nan("")) + roundToInt32(0.49999999999999994), 0);
}

} // namespace
} // namespace ov
