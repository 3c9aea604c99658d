// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "widgets/main_button.h"

#include <QStyleOptionButton>

namespace ov::widgets {

MainButton::MainButton(QWidget* parent) : QPushButton(parent) {
    QFont bold; // only that: all else is the desktop's, also when it changes
    bold.setBold(true);
    setFont(bold);
}

void MainButton::initStyleOption(QStyleOptionButton* option) const {
    QPushButton::initStyleOption(option);
    option->features |= QStyleOptionButton::DefaultButton;
}

} // namespace ov::widgets
