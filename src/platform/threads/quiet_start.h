// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

namespace ov::platform {

// Calls `start`. The threads that it starts, and those that these start, leave the signals of the
// process to the host's own threads.
void startQuietly(const std::function<void()>& start);

} // namespace ov::platform
