// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "tests/control/rows_fixture.h"
#include "widgets/legible.h"

#include <array>

namespace ov {
namespace {

// "Normal" and "Dictated" that no name holds.
class AssumedValues : public RowsTest {
protected:
    AssumedValues() {
        store.add("2$WAV@@14$Anna@@5$NORMAL.WAV")
            .add("2$WAV@@14$Berta.WAV")
            .add("@@14$Carla@@5$@@99$ROH.WAV");
    }
    ~AssumedValues() override { QApplication::setPalette(before_); }
    void open() {
        openAndSearch();
        clickHeader(column(5));
        results().clearSelection();
        for (const int field : {2, 15})
            results().setColumnWidth(column(field), 150);
    }
    // The colours of letters and background that stand out most in the picture of a cell.
    double contrast(int row, int field) {
        const QRect place = results().visualRect(cell(row, field)).adjusted(2, 2, -2, -2);
        const QImage picture = results().viewport()->grab(place).toImage();
        const QColor background = picture.pixelColor(picture.width() - 1, 0);
        double best = 1;
        for (int y = 0; y < picture.height(); ++y)
            for (int x = 0; x < picture.width(); ++x)
                best = std::max(best, widgets::contrast(picture.pixelColor(x, y), background));
        return best;
    }
    static void paint(QRgb text, QRgb base, QRgb highlighted, QRgb highlight) {
        QPalette colours;
        for (const auto& [role, colour] :
             {std::pair(QPalette::Text, text), std::pair(QPalette::Base, base),
              std::pair(QPalette::AlternateBase, base),
              std::pair(QPalette::HighlightedText, highlighted),
              std::pair(QPalette::Highlight, highlight)})
            colours.setColor(role, QColor(colour));
        QApplication::setPalette(colours);
        QCoreApplication::processEvents();
    }

private:
    QPalette before_ = QApplication::palette();
};

TEST_F(AssumedValues, AreToldFromWrittenOnes) {
    open();
    const std::tuple<int, int, std::string> cases[] = {
        // row, field, what is told of it
        {0, 15, ""},
        {0, 2, ""},
        {0, 18, ""},
        {1, 2, ""},
        {1, 15, "Normal (not written in the name)"},
        {2, 15, "Normal (not written in the name)"},
        {2, 2, "Dictated (not written in the name)"}};
    for (const auto& [row, field, told] : cases) {
        EXPECT_EQ(toolTip(row, field), told.empty() ? "" : "<qt>" + told + "</qt>")
            << row << " " << field;
        EXPECT_EQ(cell(row, field).data(Qt::AccessibleTextRole).toString().toStdString(), told)
            << row << " " << field;
    }
    results().setColumnWidth(column(15), 24);
    EXPECT_EQ(toolTip(1, 15), "<qt>Normal (not written in the name)</qt>") << "of a picture";
    results().setColumnWidth(column(2), 24);
    EXPECT_NE(picture(cell(0, 2)), picture(cell(2, 2))) << "on the same background";
    results().selectAll();
    EXPECT_NE(picture(cell(0, 2)), picture(cell(2, 2))) << "when selected, too";
    speak("7");
    EXPECT_EQ(toolTip(1, 15), "<qt>Normal (steht nicht im Namen)</qt>");
}

// Light, dark, and of high contrast.
TEST_F(AssumedValues, StandBackAndCanBeRead) {
    open();
    for (const auto& [text, base, highlighted, highlight] :
         {std::array<QRgb, 4>{0x000000, 0xffffff, 0xffffff, 0x2060a0},
          {0xeeeeee, 0x232629, 0xfcfcfc, 0x1d5b7a},
          {0xffff00, 0x000000, 0x000000, 0x00ff00}}) {
        paint(text, base, highlighted, highlight);
        for (const bool selected : {false, true}) {
            selected ? results().selectAll() : results().clearSelection();
            const double written = contrast(0, 15);
            for (const int row : {1, 2}) {
                EXPECT_LT(contrast(row, 15), 0.9 * written) << row << " " << selected;
                EXPECT_GE(contrast(row, 15), 4.0) << row << " " << selected;
            }
            EXPECT_GT(contrast(1, 2), 0.9 * contrast(0, 2)) << "it is written";
        }
    }
}

} // namespace
} // namespace ov
