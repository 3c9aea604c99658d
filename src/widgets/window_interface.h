// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "platform/user_interface.h"

#include <QList>
#include <memory>

class QMessageBox;

namespace ov::widgets {

// Message boxes, pump and beep of a program with windows. One for all who use it in a thread,
// installed while anybody does: an old control may still end while a new one lives.
class WindowInterface final : public platform::UserInterface {
public:
    static std::shared_ptr<WindowInterface> shared();

    ~WindowInterface() override;
    WindowInterface(const WindowInterface&) = delete;
    WindowInterface& operator=(const WindowInterface&) = delete;

    // The owner of a box is a QWidget*; a box without one stays above all windows.
    platform::MessageAnswer showMessage(const platform::MessageBox& box) override;
    void processMessages() override;
    void beep() override;

    // Answers the boxes that are open as Esc would.
    void closeBoxes();

private:
    WindowInterface();
    void run(QMessageBox& window);
    platform::MessageAnswer askYesNo(QMessageBox& window, platform::MessageAnswer defaultAnswer);

    QList<QMessageBox*> open_;
    platform::UserInterface* before_;
};

} // namespace ov::widgets
