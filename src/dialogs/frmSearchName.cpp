// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "dialogs/frmSearchName.h"

#include "support/language/text_ids.h"
#include "widgets/captions.h"
#include "widgets/text.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace ov {

frmSearchName::frmSearchName(QWidget* parent)
    : OneUseDialog(parent, "frmSearchName"), txtName_(new QLineEdit(this)) {
    txtName_->setObjectName(QStringLiteral("txtName"));
    constexpr int longest = 200;
    txtName_->setMaxLength(longest);
    constexpr int letters = 40;
    txtName_->setMinimumWidth(fontMetrics().averageCharWidth() * letters);
    auto* label = new QLabel(this);
    label->setBuddy(txtName_);
    widgets::setCaption(*label, text_id::searchNameLabel);
    widgets::setCaption(*this, text_id::searchNameTitle);
    auto* column = new QVBoxLayout(this);
    column->addWidget(label);
    column->addWidget(txtName_);
    column->addStretch(1);
    column->addWidget(makeButtons());
    connect(txtName_, &QLineEdit::textChanged, this,
            [this](const QString& text) { cmdOK()->setEnabled(!text.trimmed().isEmpty()); });
}

void frmSearchName::load() {
    retranslate();
    txtName_->setText(widgets::toQt(SearchName));
    txtName_->selectAll();
    cmdOK()->setEnabled(!SearchName.empty());
    txtName_->setFocus();
}

void frmSearchName::cmdOK_Click() {
    SearchName = widgets::toUtf8(txtName_->text().simplified());
    accept();
}

} // namespace ov
