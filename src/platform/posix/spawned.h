// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include <cerrno>
#include <csignal>
#include <initializer_list>
#include <spawn.h>
#include <sys/wait.h>

// What every program that we start needs.

namespace ov::platform {

// It starts with the signals that ours was started with, but for the one that endWithoutLeftovers()
// ignores, and `others`.
class SpawnAttributes {
public:
    explicit SpawnAttributes(std::initializer_list<int> others = {}) {
        posix_spawnattr_init(&attributes_);
        sigset_t usual;
        sigemptyset(&usual);
        sigaddset(&usual, SIGXFSZ);
        for (const int signal : others)
            sigaddset(&usual, signal);
        posix_spawnattr_setsigdefault(&attributes_, &usual);
        posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSIGDEF);
    }
    ~SpawnAttributes() { posix_spawnattr_destroy(&attributes_); }
    SpawnAttributes(const SpawnAttributes&) = delete;
    SpawnAttributes& operator=(const SpawnAttributes&) = delete;

    const posix_spawnattr_t* get() const noexcept { return &attributes_; }

private:
    posix_spawnattr_t attributes_{};
};

// Until it has ended, and how; false with errno set.
inline bool waitFor(pid_t child, int& ended) noexcept {
    while (waitpid(child, &ended, 0) < 0)
        if (errno != EINTR)
            return false;
    return true;
}

} // namespace ov::platform
