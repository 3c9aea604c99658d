// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>

// Times that cost next to nothing to ask for.

namespace ov::platform {

// A clock for hot loops: steady, a few nanoseconds to ask, a few milliseconds coarse.
std::int64_t coarseMilliseconds() noexcept;

// What this thread has done so far. Where `waits` stay as they are it was held up by nothing but
// other threads of a busy machine.
struct ThreadEffort {
    std::int64_t nanoseconds = 0; // on a processor
    std::int64_t waits = 0;       // for a disk, a server, a lock
};
ThreadEffort threadEffort() noexcept;

} // namespace ov::platform
