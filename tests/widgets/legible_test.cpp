// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "widgets/legible.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QPushButton>
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

} // namespace
} // namespace ov::widgets
