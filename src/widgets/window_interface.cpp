// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "widgets/window_interface.h"

#include "support/text_ids.h"
#include "widgets/text.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>

namespace ov::widgets {

namespace {

QMessageBox::Icon iconOf(platform::MessageIcon icon) {
    switch (icon) {
    case platform::MessageIcon::information:
        return QMessageBox::Information;
    case platform::MessageIcon::exclamation:
        return QMessageBox::Warning;
    case platform::MessageIcon::question:
        break;
    }
    return QMessageBox::Question;
}

// Keeps Qt's own text when the language file could not be read.
QPushButton* addButton(QMessageBox& window, QMessageBox::StandardButton button,
                       std::int32_t textId) {
    QPushButton* added = window.addButton(button);
    if (const QString caption = text(textId); !caption.isEmpty())
        added->setText(caption);
    return added;
}

platform::MessageAnswer askYesNo(QMessageBox& window, platform::MessageAnswer defaultAnswer) {
    QPushButton* yes = addButton(window, QMessageBox::Yes, text_id::yes);
    QPushButton* no = addButton(window, QMessageBox::No, text_id::no);
    window.setDefaultButton(defaultAnswer == platform::MessageAnswer::yes ? yes : no);
    window.setEscapeButton(no);
    window.exec();
    return window.clickedButton() == yes ? platform::MessageAnswer::yes
                                         : platform::MessageAnswer::no;
}

} // namespace

WindowInterface::WindowInterface() : before_(platform::installUserInterface(this)) {}

WindowInterface::~WindowInterface() {
    platform::installUserInterface(before_);
}

platform::MessageAnswer WindowInterface::showMessage(const platform::MessageBox& box) {
    QMessageBox window(static_cast<QWidget*>(box.owner));
    window.setObjectName(QStringLiteral("MessageBox"));
    window.setIcon(iconOf(box.icon));
    window.setWindowTitle(toQt(box.title));
    window.setTextFormat(Qt::PlainText); // a file may be named like markup
    window.setText(toQt(box.text).replace(QLatin1String("\r\n"), QLatin1String("\n")));
    if (box.owner == nullptr)
        window.setWindowFlag(Qt::WindowStaysOnTopHint);
    if (box.buttons == platform::MessageButtons::yesNo)
        return askYesNo(window, box.defaultAnswer);
    addButton(window, QMessageBox::Ok, text_id::ok);
    window.exec();
    return platform::MessageAnswer::ok;
}

void WindowInterface::processMessages() {
    QCoreApplication::processEvents();
}

void WindowInterface::beep() {
    QApplication::beep();
}

} // namespace ov::widgets
