// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "platform/threads/detached_thread.h"

#include <csignal>
#include <exception>
#include <thread>
#include <utility>

namespace ov::platform {

bool startDetached(std::function<void()> work) {
    sigset_t all;
    sigset_t before;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &before);
    bool started = true;
    try {
        std::thread(std::move(work)).detach();
    } catch (const std::exception&) {
        started = false;
    }
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    return started;
}

} // namespace ov::platform
