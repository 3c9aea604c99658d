// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "dialogs/one_use_dialog.h"

#include <QLineEdit>
#include <string>

namespace ov {

// Asks for the name of a saved search, made for one use: set SearchName, show it modally, then
// read OKPressed() and, when that is true, SearchName, which is not empty.
class frmSearchName final : public OneUseDialog {
    Q_OBJECT

public:
    explicit frmSearchName(QWidget* parent);

    std::string SearchName;

private:
    void load() override;
    void cmdOK_Click() override;

    QLineEdit* txtName_;
};

} // namespace ov
