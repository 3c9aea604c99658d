// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/posix/file_descriptor.h"

#include <string>

namespace ov::platform {

// Keeps other writers of settings away from a file's directory while it lives. The directory
// itself is locked: a lock on the file would be lost when the file is replaced, and a lock file
// would be left behind.
class ProfileLock {
public:
    // Waits up to three seconds for another writer. `nativeFile` need not exist; for a link the
    // directory that the link leads to is locked.
    explicit ProfileLock(const std::string& nativeFile);
    ~ProfileLock();
    ProfileLock(const ProfileLock&) = delete;
    ProfileLock& operator=(const ProfileLock&) = delete;

    // False when there is no such directory or somebody else kept the lock too long. True also
    // where the file system or the rights on the directory do not allow locking.
    bool mayGoOn() const noexcept { return mayGoOn_; }

private:
    FileDescriptor directory_;
    bool mayGoOn_;
};

} // namespace ov::platform
