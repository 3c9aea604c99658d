// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "dialogs/frmExportOptionsPrint.h"
#include "tests/window/window_fixture.h"

#include <QPrintDialog>

namespace ov {
namespace {

using tests::child;

class PrintOptions : public tests::WindowTest {
protected:
    frmExportOptionsPrint& open(const std::string& title, std::int16_t range = 0) {
        form_ = std::make_unique<frmExportOptionsPrint>();
        form_->Titel = title;
        form_->DruckBereichIndex = range;
        form_->Orientation = 2;
        form_->Font_Name = "Any <font>";
        form_->Font_Size = -7;
        form_->show();
        return *form_;
    }
    QLineEdit& title() { return child<QLineEdit>(*form_, "txtTitel"); }
    void press(const char* name) { tests::clickOn(*form_, name); }

    std::unique_ptr<frmExportOptionsPrint> form_;
};

TEST_F(PrintOptions, GivesBackTitleAndRange) {
    const std::vector<std::array<std::string, 4>> cases = {
        {"", "Dictations found", "Dictations found", "Dictations found"},
        {"Mine", "Mine", "  Ward 3\t ", "Ward 3\t"},
        {"Mine", "Mine", "   ", ""},
    };
    for (const auto& [before, shown, typed, after] : cases) {
        open(before, frmExportOptionsPrint::markierte);
        EXPECT_TRUE(child<QRadioButton>(*form_, "optBereich(1)").isChecked());
        EXPECT_EQ(title().text().toStdString(), shown);
        title().setText(QString::fromStdString(typed));
        press("cmdOK");
        EXPECT_TRUE(form_->OKPressed());
        EXPECT_EQ(form_->Titel, after);
        EXPECT_EQ(form_->DruckBereichIndex, 1);
        EXPECT_EQ(form_->Orientation, 2);
        EXPECT_EQ(form_->Font_Name, "Any <font>");
        EXPECT_EQ(form_->Font_Size, -7);
    }
}

TEST_F(PrintOptions, CancelKeepsTheTitleButNotTheRange) {
    open("Mine");
    QTest::keyClicks(&title(), QString(100, QLatin1Char('x')));
    EXPECT_EQ(title().text().size(), 64);
    for (const char* name : {"btnChooseListItemFont", "btnPageSetup", "optBereich(1)"})
        press(name);
    EXPECT_TRUE(form_->isVisible());
    press("cmdCancel");
    EXPECT_FALSE(form_->OKPressed() || form_->isVisible());
    EXPECT_EQ(form_->Titel, "Mine");
    EXPECT_EQ(form_->DruckBereichIndex, 1);
}

TEST_F(PrintOptions, OpensTheSystemsPrinterDialog) {
    open("Mine");
    const QString before = child<QLabel>(*form_, "lblPrinterDevice").text();
    tests::withDialog([this] { press("cmdChangePrinter"); },
                      [](QDialog& dialog) {
                          const auto& chooser = dynamic_cast<QPrintDialog&>(dialog);
                          EXPECT_FALSE(chooser.testOption(QAbstractPrintDialog::PrintToFile));
                          EXPECT_FALSE(chooser.testOption(QAbstractPrintDialog::PrintSelection));
                      });
    EXPECT_EQ(child<QLabel>(*form_, "lblPrinterDevice").text(), before);
    EXPECT_EQ(child<QLabel>(*form_, "lblCopies").text().isEmpty(), before.isEmpty());
}

TEST_F(PrintOptions, ReadsAsOneGoesAndFollowsTheLanguage) {
    open({});
    EXPECT_EQ(tests::tabOrder(*form_),
              "txtTitel btnChooseListItemFont btnPageSetup cmdOK cmdCancel "
              "cmdChangePrinter optBereich(0) optBereich(1) ");
    tests::speakGerman(*form_);
    EXPECT_EQ(tests::readable(*form_),
              "Ergebnisliste drucken|&Schriftart …|Seite &einrichten …|Drucker|"
              "Name:>lblPrinterDevice|Anschluss:>lblPrinterPort|Exemplare:>lblCopies|"
              "&Drucker wechseln …|Druckbereich|Alle &Zeilen|&Markierte Zeilen|&Titel:>txtTitel|"
              "OK|Abbrechen");
    EXPECT_TRUE(tests::isTidy(*form_));
    QTest::keyClick(&title(), Qt::Key_Return);
    EXPECT_TRUE(form_->OKPressed());
}

} // namespace
} // namespace ov
