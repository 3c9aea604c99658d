// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "widgets/spoken.h"

#include <gtest/gtest.h>

#include <QLabel>

namespace ov::widgets {
namespace {

TEST(Spoken, StandsNowhere) {
    QWidget window;
    QLabel about(&window);
    window.show();
    for (const char* words : {"<b>Done", "Gone"})
        announce(about, QLatin1String(words));
    const auto labels = window.findChildren<QLabel*>();
    ASSERT_EQ(labels.size(), 2) << "one for all";
    const QLabel& said = *labels.back();
    EXPECT_EQ(said.text(), QStringLiteral("Gone"));
    EXPECT_EQ(said.textFormat(), Qt::PlainText);
    EXPECT_TRUE(said.isVisible());
    EXPECT_EQ(said.size(), QSize(0, 0));
    EXPECT_EQ(QAccessible::queryAccessibleInterface(labels.back())->role(),
              QAccessible::Notification);
}

} // namespace
} // namespace ov::widgets
