// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>

namespace ov::platform {

// Whether something has come on the connection, or it has broken, within that time. `socket` is as
// the system numbers them.
bool waitForInput(int socket, std::chrono::milliseconds longest);
// The same, or whether there is room for something to be sent.
bool waitForInputOrRoom(int socket, std::chrono::milliseconds longest);

} // namespace ov::platform
