// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "widgets/first_size.h"
#include "widgets/icons.h"
#include "widgets/legible.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QStyle>
#include <vector>

namespace ov::widgets {
namespace {

TEST(Legible, CountsContrastAsTheGuidelinesDo) {
    EXPECT_NEAR(contrast(Qt::black, Qt::white), 21, 0.01);
    EXPECT_NEAR(contrast(Qt::white, QColor(0x77, 0x77, 0x77)), 4.48, 0.01);
    EXPECT_NEAR(contrast(Qt::red, Qt::blue), 2.15, 0.01);
}

// Text and background of the desktop: light, dark, of high contrast, and hard to read anyway.
TEST(Legible, HintsCanBeReadInAllColours) {
    const QPalette before = QApplication::palette();
    QWidget window;
    QLabel hint(&window);
    setHint(hint);
    for (const auto& [text, background] : std::vector<std::pair<QColor, QColor>>{
             {Qt::black, QColor(0xef, 0xef, 0xef)},
             {QColor(0xee, 0xee, 0xee), QColor(0x31, 0x36, 0x3b)},
             {Qt::yellow, Qt::black},
             {Qt::white, QColor(0x00, 0x00, 0x80)},
             {QColor(0x80, 0x80, 0x80), Qt::white}}) {
        QPalette colours = before;
        colours.setColor(QPalette::WindowText, text);
        colours.setColor(QPalette::Window, background);
        QApplication::setPalette(colours);
        window.show();
        QCoreApplication::processEvents();
        const QColor shown = hint.palette().color(QPalette::WindowText);
        const double best = contrast(text, background);
        EXPECT_GE(contrast(shown, background), std::min(best, legibleContrast))
            << text.name().toStdString() << " on " << background.name().toStdString();
        EXPECT_EQ(contrast(shown, background) < best, best > legibleContrast) << "it stands back";
    }
    QApplication::setPalette(before);
}

TEST(Legible, IconsGrowWithTheLetters) {
    QPushButton button;
    fitIcon(button);
    const int usual = button.iconSize().height();
    QFont large = button.font();
    large.setPixelSize(4 * usual);
    button.setFont(large);
    QCoreApplication::processEvents();
    EXPECT_GE(button.iconSize().height(), 4 * usual);
    large.setPixelSize(8);
    button.setFont(large);
    EXPECT_EQ(button.iconSize().height(), usual);
}

// Those of our own colours would vanish in the highlight.
TEST(Legible, IconsStandOutInSelectedRows) {
    const QColor highlighted = QApplication::palette().color(QPalette::HighlightedText);
    for (const char* name : {"add", "columns", "search"})
        for (const int side : {16, 64}) {
            const QImage selected = icon(name).pixmap(side, QIcon::Selected).toImage();
            EXPECT_EQ(selected.width(), side) << name;
            EXPECT_NE(selected, icon(name).pixmap(side).toImage()) << name;
            bool stands = false;
            for (int at = 0; at < side * side; ++at)
                stands = stands || selected.pixelColor(at % side, at / side) == highlighted;
            EXPECT_TRUE(stands) << name;
        }
    EXPECT_TRUE(icon("no such").isNull());
}

TEST(Legible, WindowsFitTheirTextsAndTheScreen) {
    QLabel window(QStringLiteral("These words are seen."));
    const QSize room = window.screen()->availableSize();
    const int title = window.style()->pixelMetric(QStyle::PM_TitleBarHeight);
    ASSERT_GT(title, 0);
    for (const auto& [wanted, size] : std::vector<std::pair<QSize, QSize>>{
             {{1, 1}, window.sizeHint()},
             {{300, 200}, {300, 200}},
             {{9000, 9000}, {room.width(), room.height() - title}}}) {
        resizeOnScreen(window, wanted);
        EXPECT_EQ(window.size(), size);
    }
}

} // namespace
} // namespace ov::widgets
