// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "platform/user_interface.h"

#include "platform/coarse_clock.h"

#include <cstdint>
#include <cstdio>
#include <utility>

namespace ov::platform {

namespace {

class BuiltInUserInterface final : public UserInterface {
public:
    MessageAnswer showMessage(const MessageBox& box) override {
        static_cast<void>(std::fprintf(stderr, "%s: %s\n", box.title.c_str(), box.text.c_str()));
        return box.defaultAnswer;
    }
    void processMessages() override {}
    void beep() override {}
};

struct InterfaceState {
    BuiltInUserInterface builtIn;
    UserInterface* installed = nullptr;
    std::int64_t nextPump = 0; // coarse milliseconds
};

InterfaceState& interfaceState() {
    thread_local InterfaceState ofThread;
    return ofThread;
}

constexpr std::int64_t pumpIntervalMs = 10;

} // namespace

UserInterface* installUserInterface(UserInterface* userInterface) {
    InterfaceState& current = interfaceState();
    current.nextPump = 0;
    return std::exchange(current.installed, userInterface);
}

UserInterface& userInterface() {
    InterfaceState& current = interfaceState();
    return current.installed != nullptr ? *current.installed : current.builtIn;
}

void processMessagesNowAndThen() {
    InterfaceState& current = interfaceState();
    const std::int64_t now = coarseMilliseconds();
    if (now < current.nextPump)
        return;
    // Set before as well, so that a handler that comes here again does not start itself over.
    current.nextPump = now + pumpIntervalMs;
    userInterface().processMessages();
    // Counted from the end, so that a slow handler cannot eat the whole search.
    current.nextPump = coarseMilliseconds() + pumpIntervalMs;
}

} // namespace ov::platform
