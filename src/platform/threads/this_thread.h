// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>

// What the calling thread has done so far, and how urgent it is.

namespace ov::platform {

// Where `waits` stay as they are it was held up by nothing but other threads of a busy machine.
struct ThreadEffort {
    std::int64_t nanoseconds = 0; // on a processor
    std::int64_t waits = 0;       // for a disk, a server, a lock
};
ThreadEffort threadEffort() noexcept;

// Nanoseconds in which it could have gone on, but others had the processors. Costs more to ask
// for; stays 0 where the system does not count them.
std::int64_t nanosecondsInQueue() noexcept;

// From now on others go first: those that answer the user.
void stepBack() noexcept;

// From now on it goes before others: for what is done in no time, and must not be late. Whether the
// user may; most systems grant it to those who work with sound.
bool stepForward() noexcept;
bool mayStepForward() noexcept;

} // namespace ov::platform
