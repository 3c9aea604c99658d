// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "platform/user_interface.h"

#include <QPointer>
#include <QWidget>

namespace ov::widgets {

// Message boxes, pump and beep of a program with windows. Installed while it lives.
class WindowInterface final : public platform::UserInterface {
public:
    WindowInterface();
    ~WindowInterface() override;
    WindowInterface(const WindowInterface&) = delete;
    WindowInterface& operator=(const WindowInterface&) = delete;

    // The owner of a box is a QWidget*; a box without one stays above all windows.
    platform::MessageAnswer showMessage(const platform::MessageBox& box) override;
    void processMessages() override;
    void beep() override;

private:
    platform::UserInterface* before_;
};

} // namespace ov::widgets
