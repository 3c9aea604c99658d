// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "control/results/column_layout.h"

#include <gtest/gtest.h>

namespace ov {
namespace {

using Fields = std::vector<std::int32_t>;

TEST(ColumnLayout, KeepsThePlacesOfColumnsThatComeAndGo) {
    EXPECT_EQ(ColumnLayout().arranged(Fields{1, 2, 3}), (Fields{1, 2, 3}));
    ColumnLayout layout({3, 9, 1, 3}, {});
    EXPECT_EQ(layout.arranged(Fields{1, 2, 3}), (Fields{3, 1, 2})) << "2 was never moved";
    EXPECT_EQ(layout.arranged(Fields{0, 1, 3}), (Fields{0, 3, 1}));
    layout.arrange({1, 3});
    EXPECT_EQ(layout.order(), (Fields{1, 3, 9})) << "9 is not shown and follows 3 as before";
    EXPECT_EQ(layout.arranged(Fields{1, 3, 9}), (Fields{1, 3, 9}));
}

TEST(ColumnLayout, KnowsTheNewestWidth) {
    ColumnLayout layout({}, {{5, 100}, {6, 200}});
    layout.setWidth(5, 300);
    EXPECT_EQ(layout, ColumnLayout({}, {{6, 200}, {5, 300}}));
    EXPECT_EQ(layout.width(5), 300);
    EXPECT_EQ(layout.width(7), std::nullopt);
}

} // namespace
} // namespace ov
