// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "playback/typed_time.h"

#include <gtest/gtest.h>

#include <utility>

namespace ov {
namespace {

TEST(TypedTime, Forms) {
    const std::pair<const char*, std::optional<TypedTime>> cases[] = {
        {"0", TypedTime{0, false}},
        {" 83 ", TypedTime{83, false}},
        {"1:23", TypedTime{83, false}},
        {"90:00", TypedTime{5400, false}},
        {"1:02:03", TypedTime{3723, false}},
        {"+30", TypedTime{30, true}},
        {"- 1:00", TypedTime{-60, true}},
        {"+0", TypedTime{0, true}},
        {"9999:59:59", TypedTime{35999999, false}},
        {"", std::nullopt},
        {"+", std::nullopt},
        {"+-1", std::nullopt},
        {"1:60", std::nullopt},
        {"1:60:00", std::nullopt},
        {"10000:00:00", std::nullopt},
        {"1:", std::nullopt},
        {":30", std::nullopt},
        {"1:2:3:4", std::nullopt},
        {"1m", std::nullopt},
        {"1234567", std::nullopt}};
    for (const auto& [text, time] : cases)
        EXPECT_EQ(readTypedTime(text), time) << text;
}

} // namespace
} // namespace ov
