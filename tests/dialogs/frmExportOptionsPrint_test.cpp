// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "dialogs/frmExportOptionsPrint.h"
#include "tests/window/window_fixture.h"

#include <QPrintDialog>

namespace ov {
namespace {

class PrintOptions : public WindowTest {
protected:
    void open(const std::string& title, std::int16_t range = 0) {
        form_ = std::make_unique<frmExportOptionsPrint>();
        form_->Titel = title;
        form_->DruckBereichIndex = range;
        form_->show();
        EXPECT_TRUE(child<QRadioButton>(*form_, range == 0 ? "optBereich(0)" : "optBereich(1)")
                        .isChecked());
    }
    QLineEdit& title() { return child<QLineEdit>(*form_, "txtTitel"); }

    std::unique_ptr<frmExportOptionsPrint> form_;
};

TEST_F(PrintOptions, GivesBackTitleAndRange) {
    for (const auto& [before, typed, after] : std::vector<std::array<std::string, 3>>{
             {"", "", "Dictations found"}, {"Mine", "2 ", "Mine2"}, {"\tMine", "", "\tMine"}}) {
        open(before, frmExportOptionsPrint::markierte);
        title().setText(title().text() + QString::fromStdString(typed));
        clickOn(*form_, "cmdOK");
        EXPECT_TRUE(form_->OKPressed());
        EXPECT_EQ(form_->Titel, after);
        EXPECT_EQ(form_->DruckBereichIndex, 1);
    }
}

TEST_F(PrintOptions, CancelKeepsTheTitleButNotTheRange) {
    open("Mine");
    QTest::keyClicks(&title(), QStringLiteral("x"));
    clickOn(*form_, "optBereich(1)");
    clickOn(*form_, "cmdCancel");
    EXPECT_FALSE(form_->OKPressed() || form_->isVisible());
    EXPECT_EQ(form_->Titel, "Mine");
    EXPECT_EQ(form_->DruckBereichIndex, 1);
}

TEST_F(PrintOptions, OpensTheSystemsPrinterDialog) {
    open("Mine");
    const QString before = child<QLabel>(*form_, "lblPrinterDevice").text();
    withDialog([this] { clickOn(*form_, "cmdChangePrinter"); },
               [this](QDialog& dialog) {
                   child<QLabel>(*form_, "lblPrinterDevice").setText(QStringLiteral("another"));
                   const auto& chooser = dynamic_cast<QPrintDialog&>(dialog);
                   EXPECT_FALSE(chooser.testOption(QPrintDialog::PrintToFile) ||
                                chooser.testOption(QPrintDialog::PrintSelection));
               });
    EXPECT_EQ(child<QLabel>(*form_, "lblPrinterDevice").text(), before);
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    EXPECT_EQ(child<QLabel>(*form_, "lblCopies").text().isEmpty(), before.isEmpty());
    const auto& told = child<QLabel>(*form_, "lblNoPrinter");
    EXPECT_EQ(told.isVisible(), before.isEmpty());
    EXPECT_EQ(child<QWidget>(*form_, "cmdOK").accessibleDescription(),
              before.isEmpty() ? told.text() : QString());
}

TEST_F(PrintOptions, ReadsAsOneGoesAndFollowsTheLanguage) {
    open({});
    EXPECT_EQ(tabOrder(*form_),
              "txtTitel chkAllColumns btnChooseListItemFont btnPageSetup cmdOK cmdCancel "
              "cmdChangePrinter optBereich(0) optBereich(1) ");
    speakGerman(*form_);
    EXPECT_TRUE(isTidy(*form_));
    QTest::keyClick(&title(), Qt::Key_Return);
    EXPECT_TRUE(form_->OKPressed());
}

} // namespace
} // namespace ov
