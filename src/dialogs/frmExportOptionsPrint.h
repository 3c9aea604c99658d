// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "dialogs/one_use_dialog.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPrinter>
#include <QPushButton>
#include <QRadioButton>
#include <array>
#include <cstdint>
#include <string>

class QBoxLayout;

namespace ov {

// What is asked before the list is printed, made for one use: set the properties, show it modally,
// then read OKPressed() and, when that is true, the properties. Cancel leaves the title, but not
// the range, as it was.
class frmExportOptionsPrint final : public OneUseDialog {
    Q_OBJECT

public:
    explicit frmExportOptionsPrint(QWidget* parent = nullptr);

    // Print ranges, in the order of optBereich.
    enum Bereich : std::int16_t { alle = 0, markierte = 1 };

    std::int16_t DruckBereichIndex = alle;
    std::string Titel;       // at most 64 characters; empty: the usual one
    bool AllColumns = false; // also those that tell nothing
    // Carried through: nothing here shows or changes them.
    std::int32_t Orientation = 0;
    std::string Font_Name;
    std::int32_t Font_Size = 0;

    // The printer that was chosen. Without one its name is empty.
    QPrinter& printer() { return printer_; }

private:
    void buildWindow();
    QWidget* buildPrinterGroup();
    QWidget* buildRangeGroup();
    QBoxLayout* buildTitleRow();
    QBoxLayout* buildButtons();
    void connectAll();
    void load() override;
    void showPrinter();
    void describeOK();
    void retranslate() override;

    void cmdChangePrinter_Click();
    void cmdOK_Click() override;

    QPrinter printer_;
    QLabel* lblPrinterDevice_;
    QLabel* lblPrinterPort_;
    QLabel* lblCopies_;
    QLabel* lblNoPrinter_; // what to do without one
    QPushButton* cmdChangePrinter_;
    std::array<QRadioButton*, 2> optBereich_;
    QButtonGroup* ranges_;
    QLineEdit* txtTitel_;
    QCheckBox* chkAllColumns_;
    QPushButton* btnChooseListItemFont_;
    QPushButton* btnPageSetup_;
};

} // namespace ov
