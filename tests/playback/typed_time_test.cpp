// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "playback/typed_time.h"

#include <gtest/gtest.h>

#include <utility>

namespace ov {
namespace {

TEST(TypedTime, Forms) {
    const std::pair<const char*, TypedTime> cases[] = {
        {"0", {0, false}},        {" 83 ", {83, false}},      {"1:23", {83, false}},
        {"90:00", {5400, false}}, {"1:02:03", {3723, false}}, {"+30", {30, true}},
        {"- 1:00", {-60, true}},  {"+0", {0, true}},          {"9999:59:59", {35999999, false}}};
    for (const auto& [text, time] : cases)
        EXPECT_EQ(readTypedTime(text), time) << text;
    for (const char* none : {"", "+", "+-1", "1:60", "1:60:00", "10000:00:00", "1:", ":30",
                             "1:2:3:4", "1m", "1234567"})
        EXPECT_EQ(readTypedTime(none), std::nullopt) << none;
}

} // namespace
} // namespace ov
