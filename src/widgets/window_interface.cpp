// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "widgets/window_interface.h"

#include "support/language/text_ids.h"
#include "widgets/captions.h"
#include "widgets/text.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <algorithm>
#include <memory>

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
    if (!text(textId).isEmpty())
        setCaption(*added, textId);
    return added;
}

void showWords(QMessageBox& window, const platform::MessageBox& box) {
    window.setWindowTitle(toQt(box.title));
    window.setText(toQt(box.text).replace(QLatin1String("\r\n"), QLatin1String("\n")));
}

void keepWords(QMessageBox& window, platform::MessageBox box) {
    followLanguage(window, [&window, box = std::move(box)]() mutable {
        if (box.translate)
            box.translate(box);
        showWords(window, box);
        translate(window);
    });
}

void furnish(QMessageBox& window, const platform::MessageBox& box) {
    window.setObjectName(QStringLiteral("MessageBox"));
    window.setIcon(iconOf(box.icon));
    window.setTextFormat(Qt::PlainText); // a file may be named like markup
    showWords(window, box);
    keepWords(window, box);
    if (box.owner == nullptr)
        window.setWindowFlag(Qt::WindowStaysOnTopHint);
}

} // namespace

std::shared_ptr<WindowInterface> WindowInterface::shared() {
    thread_local std::weak_ptr<WindowInterface> inUse;
    std::shared_ptr<WindowInterface> one = inUse.lock();
    if (!one) {
        one.reset(new WindowInterface);
        inUse = one;
    }
    return one;
}

WindowInterface::WindowInterface() : before_(platform::installUserInterface(this)) {}

WindowInterface::~WindowInterface() {
    platform::installUserInterface(before_);
}

void WindowInterface::run(QMessageBox& window) {
    open_.push_back({&window, user_});
    window.exec();
    open_.pop_back(); // the box shown last is answered first
}

void WindowInterface::closeBoxes(const void* user) {
    for (const OpenBox& open : std::vector<OpenBox>(open_))
        if (open.user == user)
            open.box->reject();
    for (const Notice& notice : notices_)
        if (notice.box && notice.user == user)
            notice.box->close();
}

void WindowInterface::changeLanguage(const void* user) {
    for (const Notice& notice : notices_)
        if (notice.box && notice.user == user) {
            QEvent change(QEvent::LanguageChange);
            QCoreApplication::sendEvent(notice.box, &change);
        }
}

platform::MessageAnswer WindowInterface::askYesNo(QMessageBox& window,
                                                  platform::MessageAnswer defaultAnswer) {
    QPushButton* yes = addButton(window, QMessageBox::Yes, text_id::yes);
    QPushButton* no = addButton(window, QMessageBox::No, text_id::no);
    window.setDefaultButton(defaultAnswer == platform::MessageAnswer::yes ? yes : no);
    window.setEscapeButton(no);
    run(window);
    return window.clickedButton() == yes ? platform::MessageAnswer::yes
                                         : platform::MessageAnswer::no;
}

platform::MessageAnswer WindowInterface::showMessage(const platform::MessageBox& box) {
    QMessageBox window(static_cast<QWidget*>(box.owner));
    furnish(window, box);
    if (box.buttons == platform::MessageButtons::yesNo)
        return askYesNo(window, box.defaultAnswer);
    addButton(window, QMessageBox::Ok, text_id::ok);
    run(window);
    return platform::MessageAnswer::ok;
}

void WindowInterface::tell(const platform::MessageBox& box) {
    std::erase_if(notices_, [](const Notice& notice) { return !notice.box; });
    auto window = std::make_unique<QMessageBox>(static_cast<QWidget*>(box.owner));
    furnish(*window, box);
    window->setObjectName(QStringLiteral("Notice"));
    if (std::any_of(notices_.begin(), notices_.end(), [&](const Notice& notice) {
            return notice.box->isVisible() && notice.box->text() == window->text();
        }))
        return;
    addButton(*window, QMessageBox::Ok, text_id::ok);
    window->setAttribute(Qt::WA_DeleteOnClose);
    window->setAttribute(Qt::WA_QuitOnClose, false);
    window->setModal(false);
    notices_.push_back({window.get(), user_});
    window.release()->show();
}

void WindowInterface::processMessages() {
    QCoreApplication::processEvents();
}

void WindowInterface::beep() {
    QApplication::beep();
}

} // namespace ov::widgets
