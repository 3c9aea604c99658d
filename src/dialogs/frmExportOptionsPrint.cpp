// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "dialogs/frmExportOptionsPrint.h"

#include "platform/text.h"
#include "support/language/help_text_ids.h"
#include "support/language/text_ids.h"
#include "widgets/captions.h"
#include "widgets/first_size.h"
#include "widgets/help/guide_window.h"
#include "widgets/help/help_keys.h"
#include "widgets/text.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QGuiApplication>
#include <QPrintDialog>
#include <QPrinterInfo>
#include <QVBoxLayout>
#include <exception>

namespace ov {

namespace {

constexpr int longestTitle = 64;

QLabel* namedLabel(const char* name, QWidget* parent) {
    auto* label = new QLabel(parent);
    label->setObjectName(QLatin1String(name));
    label->setTextFormat(Qt::PlainText); // a printer may be named like markup
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    return label;
}

QPushButton* namedButton(const char* name, std::int32_t textId, QWidget* parent) {
    auto* button = new QPushButton(parent);
    button->setObjectName(QLatin1String(name));
    button->setAutoDefault(false);
    widgets::setCaption(*button, textId);
    return button;
}

} // namespace

frmExportOptionsPrint::frmExportOptionsPrint(QWidget* parent)
    : OneUseDialog(parent, "frmExportOptionsPrint"),
      printer_(QPrinter::HighResolution),
      lblPrinterDevice_(namedLabel("lblPrinterDevice", this)),
      lblPrinterPort_(namedLabel("lblPrinterPort", this)),
      lblCopies_(namedLabel("lblCopies", this)),
      lblNoPrinter_(namedLabel("lblNoPrinter", this)),
      cmdChangePrinter_(namedButton("cmdChangePrinter", text_id::changePrinter, this)),
      optBereich_{new QRadioButton(this), new QRadioButton(this)},
      ranges_(new QButtonGroup(this)),
      txtTitel_(new QLineEdit(this)),
      chkAllColumns_(new QCheckBox(this)),
      btnChooseListItemFont_(namedButton("btnChooseListItemFont", text_id::listFont, this)),
      btnPageSetup_(namedButton("btnPageSetup", text_id::pageSetup, this)) {
    widgets::setCaption(*this, text_id::printTitle);
    buildWindow();
    connectAll();
    widgets::setChapter(*this, widgets::chapter::lists);
}

void frmExportOptionsPrint::buildWindow() {
    auto* column = new QVBoxLayout(this);
    column->addWidget(buildPrinterGroup());
    column->addWidget(buildRangeGroup());
    column->addLayout(buildTitleRow());
    chkAllColumns_->setObjectName(QStringLiteral("chkAllColumns"));
    widgets::setCaption(*chkAllColumns_, text_id::allColumns);
    widgets::setTip(*chkAllColumns_, text_id::allColumnsTip);
    column->addWidget(chkAllColumns_);
    column->addStretch(1);
    column->addLayout(buildButtons());
}

QWidget* frmExportOptionsPrint::buildPrinterGroup() {
    auto* group = new QGroupBox(this);
    widgets::setCaption(*group, text_id::printerGroup);
    auto* rows = new QFormLayout(group);
    const auto add = [&](std::int32_t textId, QLabel* value) {
        auto* caption = new QLabel(group);
        widgets::setCaption(*caption, textId);
        caption->setBuddy(value);
        rows->addRow(caption, value);
    };
    add(text_id::printerName, lblPrinterDevice_);
    add(text_id::printerPort, lblPrinterPort_);
    add(text_id::printerCopies, lblCopies_);
    lblNoPrinter_->setWordWrap(true);
    widgets::setCaption(*lblNoPrinter_, text_id::printNeedsPrinter);
    rows->addRow(lblNoPrinter_);
    rows->addRow(cmdChangePrinter_);
    return group;
}

QWidget* frmExportOptionsPrint::buildRangeGroup() {
    auto* group = new QGroupBox(this);
    widgets::setCaption(*group, text_id::printRangeGroup);
    auto* rows = new QVBoxLayout(group);
    for (int i = 0; i < static_cast<int>(optBereich_.size()); ++i) {
        QRadioButton* option = optBereich_[static_cast<std::size_t>(i)];
        option->setObjectName(widgets::indexedName("optBereich", i));
        widgets::setCaption(*option, text_id::printRangeAll + i);
        ranges_->addButton(option, i);
        rows->addWidget(option);
    }
    return group;
}

QBoxLayout* frmExportOptionsPrint::buildTitleRow() {
    auto* row = new QHBoxLayout;
    auto* caption = new QLabel(this);
    widgets::setCaption(*caption, text_id::printoutTitle);
    caption->setBuddy(txtTitel_);
    txtTitel_->setObjectName(QStringLiteral("txtTitel"));
    row->addWidget(caption);
    row->addWidget(txtTitel_, 1);
    return row;
}

QBoxLayout* frmExportOptionsPrint::buildButtons() {
    auto* row = new QHBoxLayout;
    row->addWidget(btnChooseListItemFont_);
    row->addWidget(btnPageSetup_);
    row->addStretch(1);
    row->addWidget(makeButtons());
    return row;
}

// The buttons for font and page have never had a function.
void frmExportOptionsPrint::connectAll() {
    connect(cmdChangePrinter_, &QPushButton::clicked, this,
            &frmExportOptionsPrint::cmdChangePrinter_Click);
    connect(ranges_, &QButtonGroup::idClicked, this,
            [this](int index) { DruckBereichIndex = static_cast<std::int16_t>(index); });
}

void frmExportOptionsPrint::load() {
    if (Titel.empty())
        Titel = widgets::toUtf8(widgets::text(text_id::defaultPrintTitle));
    widgets::translate(*this);
    showPrinter();
    if (QAbstractButton* option = ranges_->button(DruckBereichIndex))
        option->setChecked(true);
    chkAllColumns_->setChecked(AllColumns);
    txtTitel_->setMaxLength(longestTitle);
    txtTitel_->setText(widgets::toQt(Titel));
    constexpr int comfortable = 440;
    widgets::resizeOnScreen(*this, {comfortable, 0});
    txtTitel_->setFocus();
}

void frmExportOptionsPrint::showPrinter() {
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    const QString name = printer_.printerName();
    const QPrinterInfo info = QPrinterInfo::printerInfo(name);
    lblPrinterDevice_->setText(name);
    lblPrinterPort_->setText(info.location().isEmpty() ? info.description() : info.location());
    lblCopies_->setText(name.isEmpty() ? QString() : QString::number(printer_.copyCount()));
    lblNoPrinter_->setVisible(name.isEmpty());
    describeOK();
    QGuiApplication::restoreOverrideCursor();
}

// Why it will not do.
void frmExportOptionsPrint::describeOK() {
    cmdOK()->setAccessibleDescription(lblNoPrinter_->isHidden() ? QString()
                                                                : lblNoPrinter_->text());
    cmdOK()->setToolTip(cmdOK()->accessibleDescription());
}

void frmExportOptionsPrint::retranslate() {
    OneUseDialog::retranslate();
    describeOK();
}

// Neither printing to a file nor a selection is offered: the one is an export, the other stands
// here.
void frmExportOptionsPrint::cmdChangePrinter_Click() {
    try {
        QPrintDialog chooser(&printer_, this);
        chooser.setOption(QAbstractPrintDialog::PrintToFile, false);
        chooser.setOption(QAbstractPrintDialog::PrintSelection, false);
        chooser.exec();
    } catch (const std::exception&) {
        return; // the old printer stays
    }
    showPrinter();
}

void frmExportOptionsPrint::cmdOK_Click() {
    const std::string typed = widgets::toUtf8(txtTitel_->text());
    Titel = platform::trimmed(typed, ' ');
    AllColumns = chkAllColumns_->isChecked();
    accept();
}

} // namespace ov
