// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "playback/panel/choices/choice_keeper.h"

#include <gtest/gtest.h>

#include <QTest>
#include <string>

namespace ov {
namespace {

TEST(ChoiceKeeper, WritesOnceForManyChanges) {
    std::string kept;
    ChoiceKeeper keeper({[&](const PlayerChoices& now, const PlayerChoices& before) {
                             kept += std::to_string(before.speedPercent) + ">" +
                                     std::to_string(now.speedPercent) + " ";
                         },
                         [&](std::int32_t volume) { kept += std::to_string(volume) + " "; }});
    const auto speed = [](std::int32_t percent) {
        PlayerChoices choices;
        choices.speedPercent = percent;
        return choices;
    };
    for (int i = 0; i < 100; ++i) {
        keeper.keep(i);
        keeper.keep(speed(101 + i), speed(100 + i));
    }
    EXPECT_EQ(kept, "");
    EXPECT_TRUE(QTest::qWaitFor([&] { return !kept.empty(); }));
    EXPECT_EQ(kept, "100>200 99 ");
    keeper.keep(7);
    keeper.keepNow();
    keeper.keepNow();
    EXPECT_EQ(kept, "100>200 99 7 ");
}

} // namespace
} // namespace ov
