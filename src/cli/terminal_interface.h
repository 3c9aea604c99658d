// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "platform/user_interface.h"

#include <string>

namespace ov::cli {

// The terminal's side of message boxes, pump and beep. While it lives, Ctrl-C asks the
// command to stop instead of ending the program; pressed again, it ends the program. A program that
// was started to ignore it goes on ignoring it.
class TerminalInterface final : public platform::UserInterface {
public:
    TerminalInterface();
    ~TerminalInterface() override;
    TerminalInterface(const TerminalInterface&) = delete;
    TerminalInterface& operator=(const TerminalInterface&) = delete;

    // One line on standard error, replaced by the next; nothing unless a person looks at it.
    void showProgress(const std::string& line);
    void clearProgress();
    // Before something is printed: if both share a terminal the progress is cleared, and not shown
    // again.
    void makeRoomForOutput();

    // From now on a request to end does what Ctrl-C does.
    static void heedTermination() noexcept;
    static bool interrupted() noexcept;
    // By which signal.
    static int interruptingSignal() noexcept;
    // While a pager has the terminal a further Ctrl-C does not end the program either, which would
    // leave the pager behind.
    static void outliveInterrupts(bool outlive) noexcept;

    platform::MessageAnswer showMessage(const platform::MessageBox& box) override;
    void processMessages() override;
    void beep() override;

private:
    platform::UserInterface* previous_;
    void (*previousHandler_)(int);
    bool showsProgress_;
    bool outputIsTerminal_;
    bool lineShown_ = false;
};

} // namespace ov::cli
