// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "dialogs/dialog_buttons.h"

#include "support/language/text_ids.h"
#include "widgets/captions.h"

#include <QBoxLayout>
#include <QDialogButtonBox>
#include <QPushButton>

namespace ov {

void addOkAndCancel(QBoxLayout& column, QPushButton& ok, QPushButton& cancel) {
    ok.setObjectName(QStringLiteral("cmdOK"));
    cancel.setObjectName(QStringLiteral("cmdCancel"));
    widgets::setCaption(ok, text_id::ok);
    widgets::setCaption(cancel, text_id::cancel);
    ok.setDefault(true);
    auto* buttons = new QDialogButtonBox(ok.parentWidget());
    buttons->addButton(&ok, QDialogButtonBox::AcceptRole);
    buttons->addButton(&cancel, QDialogButtonBox::RejectRole);
    column.addWidget(buttons);
}

} // namespace ov
