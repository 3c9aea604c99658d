// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/posix/file_descriptor.h"

#include <string>

namespace ov::platform {

// What is mounted or unmounted at a directory, above or below it is told by no watch of folders.
class MountWatch {
public:
    explicit MountWatch(bool isWanted);

    int handle() const noexcept { return mounts_.get(); }
    // From now on.
    void add(const std::string& native);
    // Once poll() tells of something: whether it was there.
    bool hasChanged();

private:
    std::string mountsAround() const;

    FileDescriptor mounts_;
    std::string directory_; // native
    std::string before_;
};

} // namespace ov::platform
