// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "platform/threads/socket_wait.h"

#include <poll.h>

namespace ov::platform {

namespace {

bool waitFor(short what, int socket, std::chrono::milliseconds longest) {
    pollfd waiting{socket, what, 0};
    return poll(&waiting, 1, static_cast<int>(longest.count())) != 0; // a signal is looked at too
}

} // namespace

bool waitForInput(int socket, std::chrono::milliseconds longest) {
    return waitFor(POLLIN, socket, longest);
}

bool waitForInputOrRoom(int socket, std::chrono::milliseconds longest) {
    return waitFor(POLLIN | POLLOUT, socket, longest);
}

} // namespace ov::platform
