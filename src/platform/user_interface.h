// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>
#include <string_view>

// What needs a person or a window system: message boxes, the message pump, the beep. Each face
// of the program installs its own; until one does, boxes go to standard error, questions are
// answered with their default, and the pump does nothing.

namespace ov::platform {

enum class MessageIcon { information, exclamation, question };
enum class MessageButtons { ok, yesNo };
enum class MessageAnswer { ok, yes, no };

struct MessageBox {
    std::string text;
    std::string title;
    MessageIcon icon = MessageIcon::information;
    MessageButtons buttons = MessageButtons::ok;
    MessageAnswer defaultAnswer = MessageAnswer::ok;
    void* owner = nullptr; // the face's own window handle; a box without one is topmost
    // Writes text and title of a box in the language of that moment; empty: they stay as they are.
    std::function<void(MessageBox&)> translate;
};

class UserInterface {
public:
    virtual ~UserInterface() = default;

    // Blocks until answered.
    virtual MessageAnswer showMessage(const MessageBox& box) = 0;
    // Shows something to be read, and lets nothing else run: may be called where messages must
    // not be handled.
    virtual void tell(const MessageBox& box) { static_cast<void>(showMessage(box)); }
    // Lets waiting window messages be handled. May run any code of the program.
    virtual void processMessages() = 0;
    virtual void beep() = 0;
};

// Installs the interface of this thread; nullptr restores the built-in one. The caller keeps
// ownership and uninstalls before it ends. Returns what was installed before, nullptr for the
// built-in one.
UserInterface* installUserInterface(UserInterface* userInterface);
UserInterface& userInterface();

// The pump for hot loops: asks a coarse clock and calls processMessages() at most every 5 ms. Who
// waits between the calls calls that itself, as not each of these asks the clock.
void processMessagesNowAndThen();

} // namespace ov::platform
