// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "host/window/first_page.h"

#include "host/texts.h"

#include <QVBoxLayout>

namespace ov::host {

using namespace Qt::StringLiterals;

FirstPage::FirstPage(Texts& texts, QWidget* parent) : QWidget(parent), texts_(texts) {
    setObjectName(u"firstPage"_s);
    sentence_.setAlignment(Qt::AlignCenter);
    sentence_.setWordWrap(true);
    button_.setObjectName(u"chooseFolder"_s);
    button_.setDefault(true);
    setFocusProxy(&button_);
    auto* column = new QVBoxLayout(this);
    column->addStretch(1);
    column->addWidget(&sentence_);
    column->addWidget(&button_, 0, Qt::AlignHCenter);
    column->addStretch(1);
    connect(&button_, &QPushButton::clicked, this, &FirstPage::folderWanted);
    connect(&texts_, &Texts::changed, this, &FirstPage::translate);
    translate();
}

void FirstPage::translate() {
    sentence_.setText(texts_(Text::noFolderChosen));
    button_.setText(texts_(Text::chooseFirstFolder));
}

} // namespace ov::host
