// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "dialogs/one_use_dialog.h"

#include "support/language/text_ids.h"
#include "widgets/captions.h"
#include "widgets/help/help_keys.h"

#include <QDialogButtonBox>
#include <QPushButton>
#include <QScopedValueRollback>
#include <utility>

namespace ov {

OneUseDialog::OneUseDialog(QWidget* parent, const char* name) : QDialog(parent) {
    setObjectName(QLatin1String(name));
    setWindowFlag(Qt::WindowContextHelpButtonHint);
    widgets::addHelpKeys(*this);
    widgets::followLanguage(*this, [this] {
        retranslate();
        widgets::explain(*this);
    });
}

QDialogButtonBox* OneUseDialog::makeButtons() {
    cmdOK_ = new QPushButton(this);
    auto* cancel = new QPushButton(this);
    cmdOK_->setObjectName(QStringLiteral("cmdOK"));
    cancel->setObjectName(QStringLiteral("cmdCancel"));
    widgets::setCaption(*cmdOK_, text_id::ok);
    widgets::setCaption(*cancel, text_id::cancel);
    cmdOK_->setDefault(true);
    connect(cmdOK_, &QPushButton::clicked, this, [this] {
        if (busy_)
            return;
        const QScopedValueRollback busy(busy_, true);
        cmdOK_Click();
    });
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    auto* buttons = new QDialogButtonBox(this);
    buttons->addButton(cmdOK_, QDialogButtonBox::AcceptRole);
    buttons->addButton(cancel, QDialogButtonBox::RejectRole);
    return buttons;
}

void OneUseDialog::setVisible(bool visible) {
    if (visible && !std::exchange(loaded_, true)) {
        load();
        widgets::explain(*this);
    }
    QDialog::setVisible(visible);
}

void OneUseDialog::retranslate() {
    widgets::translate(*this);
}

} // namespace ov
