// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "platform/user_interface.h"

#include <QPointer>
#include <memory>
#include <utility>
#include <vector>

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
    // One that is open already with the same text is not shown again.
    void tell(const platform::MessageBox& box) override;
    void processMessages() override;
    void beep() override;

    // Marks that code of `user` is on the stack: the boxes that it shows are that user's, also
    // those without an owner.
    class Use {
    public:
        Use(WindowInterface& windows, const void* user)
            : windows_(windows), before_(std::exchange(windows.user_, user)) {}
        ~Use() { windows_.user_ = before_; }
        Use(const Use&) = delete;
        Use& operator=(const Use&) = delete;

    private:
        WindowInterface& windows_;
        const void* before_;
    };

    // Answers the boxes of `user` that are open as Esc would, and takes its notices away.
    void closeBoxes(const void* user);
    // The notices of `user` have no window above them that would tell them of another language.
    void changeLanguage(const void* user);

private:
    WindowInterface();
    void run(QMessageBox& window);
    platform::MessageAnswer askYesNo(QMessageBox& window, platform::MessageAnswer defaultAnswer);

    struct OpenBox {
        QMessageBox* box;
        const void* user;
    };
    std::vector<OpenBox> open_;
    struct Notice {
        QPointer<QMessageBox> box; // empty once it is read
        const void* user = nullptr;
    };
    std::vector<Notice> notices_;
    const void* user_ = nullptr;
    platform::UserInterface* before_;
};

} // namespace ov::widgets
