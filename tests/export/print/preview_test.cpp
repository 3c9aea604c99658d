// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "export/print/export_progress.h"
#include "support/language/text_ids.h"
#include "tests/export/print/list_export_fixture.h"
#include "tests/window/pdf_pages.h"
#include "widgets/text.h"

#include <QProgressDialog>
#include <QScrollArea>
#include <QScrollBar>
#include <QSpinBox>

namespace ov {
namespace {

// A command lets messages be handled, and these delete the menu it was chosen from. (Seen where
// freed memory is overwritten, and with the events of a real window system.)
TEST_F(ListExport, EntriesOutliveTheirMenus) {
    addAuthors(480);
    openAndSearch();
    const auto escape = [](QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); };
    withDialog([this] { choose("preview"); }, escape, "PrintPreview");
    focusRows();
    withDialog([this] { key(QKeySequence::Save); }, escape, "ExportFile");
    withDialog([this] { choose("Print…"); }, escape, "frmExportOptionsPrint");
    choose("Copy as");
    EXPECT_EQ(copiedLines(), 481);

    const auto chooseInList = [this](const char* entry) {
        rightClick(*results().viewport());
        click(entry);
    };
    chooseInList("Select all");
    chooseInList("Copy rows");
    EXPECT_EQ(copiedLines(), 481);
    chooseInList("Copy file path");
    EXPECT_EQ(copiedLines(), 479);
    chooseInList("Show log");
    EXPECT_TRUE(host().calls.back().starts_with("PI_LogView"));
    withDialog([&] { chooseInList("Choose columns"); }, escape, "frmSearchResultColumns");
}

TEST_F(ListExport, IsWholeAtItsEnd) {
    openControl();
    exporting::print::ExportProgress progress(text_id::exporting, &window(), [] { return false; });
    EXPECT_TRUE(progress.part(1)(1));
    const auto& bar = child<QProgressDialog>(window(), "ExportProgress");
    EXPECT_EQ(bar.value(), bar.maximum());
    EXPECT_EQ(bar.labelText(), widgets::text(text_id::exporting));
}

TEST_F(ListExport, PreviewTurnsPagesZoomsAndPrints) {
    addAuthors(120);
    openAndSearch();
    const auto turnAndZoom = [](QDialog& dialog) {
        auto& view = child<QWidget>(dialog, "PageView");
        auto& number = child<QSpinBox>(dialog, "PageNumber");
        const int last = number.maximum();
        ASSERT_GT(last, 2);
        EXPECT_EQ(readable(dialog) + number.text().toStdString(),
                  "Print preview|&Print…|−|+|Whole page|&Close1 / " + std::to_string(last));
        const QImage first = view.grab().toImage();
        const auto press = [&](Qt::Key key, int page) {
            QTest::keyClick(&dialog, key);
            EXPECT_EQ(number.value(), page);
            EXPECT_EQ(view.grab().toImage() == first, page == 1) << page;
        };
        for (const char* name : {"PageArea", "PageNumber", "cmdPrint", "cmdPreviousPage",
                                 "cmdZoomIn", "cmdWholePage", "cmdClose"})
            EXPECT_FALSE(child<QWidget>(dialog, name).whatsThis().isEmpty()) << name;
        const auto& next = child<QToolButton>(dialog, "cmdNextPage");
        press(Qt::Key_End, last);
        EXPECT_FALSE(next.isEnabled());
        clickOn(dialog, "cmdPreviousPage");
        EXPECT_EQ(number.value(), last - 1);
        EXPECT_TRUE(next.isEnabled());
        press(Qt::Key_Home, 1);
        press(Qt::Key_PageUp, 1);
        press(Qt::Key_PageDown, 2);
        clickOn(dialog, "cmdNextPage");
        press(Qt::Key_PageUp, 2);
        number.setValue(1);
        EXPECT_FALSE(child<QToolButton>(dialog, "cmdPreviousPage").isEnabled());
        EXPECT_TRUE(next.isEnabled());

        const QSize whole = view.size();
        const auto wider = [&] { return (view.width() - 6.0) / (whole.width() - 6.0); };
        QTest::keyClick(&dialog, Qt::Key_Plus);
        clickOn(dialog, "cmdZoomIn");
        EXPECT_NEAR(wider(), 1.25 * 1.25, 0.01);
        QTest::keyClick(&dialog, Qt::Key_Minus);
        clickOn(dialog, "cmdZoomOut");
        EXPECT_NEAR(wider(), 1, 0.01);
        dialog.resize(dialog.size() * 0.8);
        EXPECT_NEAR(wider(), 1, 0.01) << "stays as the user wants it";
        clickOn(dialog, "cmdWholePage");
        EXPECT_LT(wider(), 0.9);
        for (int i = 0; i < 30; ++i)
            QTest::keyClick(&dialog, i < 15 ? Qt::Key_Minus : Qt::Key_Plus);
        EXPECT_NEAR(std::max(view.height(), view.width()) - 6, 400.0 * 842 / 72, 1)
            << "as large as it gets";
        QScrollBar* bar = dialog.findChild<QScrollArea*>()->verticalScrollBar();
        bar->setValue(50);
        clickOn(dialog, "cmdNextPage");
        EXPECT_EQ(bar->value(), 0) << "a page is read from its top";
        clickOn(dialog, "cmdClose");
    };
    withDialog([this] { choose("preview"); }, turnAndZoom, "PrintPreview");
    results().selectRow(1);
    const auto print = [](QDialog& preview) {
        EXPECT_EQ(child<QSpinBox>(preview, "PageNumber").maximum(), 1);
        clickOn(preview, "cmdPrint");
    };
    withDialog([&] { withDialog([this] { choose("preview", true); }, print, "PrintPreview"); },
               [](QDialog& dialog) {
                   EXPECT_TRUE(child<QRadioButton>(dialog, "optBereich(1)").isChecked());
               },
               "frmExportOptionsPrint");
}

} // namespace
} // namespace ov
