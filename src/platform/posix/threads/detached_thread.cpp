// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "platform/threads/detached_thread.h"

#include "platform/threads/quiet_start.h"

#include <exception>
#include <thread>
#include <utility>

namespace ov::platform {

bool startDetached(std::function<void()> work) {
    try {
        startQuietly([&work] { std::thread(std::move(work)).detach(); });
    } catch (const std::exception&) {
        return false;
    }
    return true;
}

} // namespace ov::platform
