// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "platform/user_interface.h"

#include "platform/threads/coarse_clock.h"

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
    std::int64_t asked = 0;    // what the clock said last
    int unasked = 0;           // calls that need not ask it
};

InterfaceState& interfaceState() {
    thread_local InterfaceState ofThread;
    return ofThread;
}

constexpr std::int64_t pumpIntervalMs = 5;

// Where calls follow each other closely, for each one that asks the clock; even of the slowest so
// many are over before a person notices.
constexpr int mostUnasked = 3;

} // namespace

UserInterface* installUserInterface(UserInterface* userInterface) {
    InterfaceState& current = interfaceState();
    current.nextPump = 0;
    current.unasked = 0;
    return std::exchange(current.installed, userInterface);
}

UserInterface& userInterface() {
    InterfaceState& current = interfaceState();
    return current.installed != nullptr ? *current.installed : current.builtIn;
}

void processMessagesNowAndThen() {
    InterfaceState& current = interfaceState();
    if (current.unasked > 0) {
        --current.unasked;
        return;
    }
    const std::int64_t now = coarseMilliseconds();
    current.unasked = now == std::exchange(current.asked, now) ? mostUnasked : 0;
    if (now < current.nextPump)
        return;
    // Set before as well, so that a handler that comes here again does not start itself over.
    current.nextPump = now + pumpIntervalMs;
    userInterface().processMessages();
    // Counted from the end, so that a slow handler cannot eat the whole search.
    current.nextPump = coarseMilliseconds() + pumpIntervalMs;
}

} // namespace ov::platform
