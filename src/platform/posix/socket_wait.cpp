// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "platform/threads/socket_wait.h"

#include <poll.h>

namespace ov::platform {

bool waitForInput(int socket, std::chrono::milliseconds longest) {
    pollfd waiting{socket, POLLIN, 0};
    return poll(&waiting, 1, static_cast<int>(longest.count())) != 0; // a signal is looked at too
}

} // namespace ov::platform
