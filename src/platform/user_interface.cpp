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

struct State {
    BuiltInUserInterface builtIn;
    UserInterface* installed = nullptr;
    std::int64_t nextPump = 0; // coarse milliseconds
};

State& state() {
    thread_local State threadState;
    return threadState;
}

constexpr std::int64_t pumpIntervalMs = 10;

} // namespace

UserInterface* installUserInterface(UserInterface* userInterface) {
    State& current = state();
    current.nextPump = 0;
    return std::exchange(current.installed, userInterface);
}

UserInterface& userInterface() {
    State& current = state();
    return current.installed != nullptr ? *current.installed : current.builtIn;
}

void processMessagesNowAndThen() {
    State& current = state();
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
