// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>

namespace ov::platform {

// Keeps other writers of settings away from a file's directory while it lives. The directory
// itself is locked: a lock on the file would be lost when the file is replaced, and a lock file
// would be left behind. It may end on another thread than it began on.
class ProfileLock {
public:
    // Waits up to a second for other writers, in the system's own queue: who asks now and then
    // starves among many. After a wait in which no file of the directory was replaced this thread
    // does not wait for it again until it was free, so that a row of settings holds a window up
    // once. `nativeFile` need not exist; for a link the directory that the link leads to is
    // locked.
    explicit ProfileLock(const std::string& nativeFile);
    ~ProfileLock();
    ProfileLock(const ProfileLock&) = delete;
    ProfileLock& operator=(const ProfileLock&) = delete;

    // False when there is no such directory or somebody else keeps the lock. True also where the
    // file system or the rights on the directory do not allow locking.
    bool mayGoOn() const noexcept { return mayGoOn_; }

private:
    std::intptr_t directory_ = -1;
    bool mayGoOn_ = false;
};

} // namespace ov::platform
