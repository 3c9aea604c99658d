// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "platform/threads/quiet_start.h"

#include <csignal>

namespace ov::platform {

namespace {

class SignalsHeldOff {
public:
    SignalsHeldOff() {
        sigset_t all;
        sigfillset(&all);
        pthread_sigmask(SIG_SETMASK, &all, &before_);
    }
    ~SignalsHeldOff() { pthread_sigmask(SIG_SETMASK, &before_, nullptr); }
    SignalsHeldOff(const SignalsHeldOff&) = delete;
    SignalsHeldOff& operator=(const SignalsHeldOff&) = delete;

private:
    sigset_t before_{};
};

} // namespace

void startQuietly(const std::function<void()>& start) {
    const SignalsHeldOff heldOff;
    start();
}

} // namespace ov::platform
