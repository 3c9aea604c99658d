// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/status.h"

#include <cstdint>
#include <string_view>

namespace ov::platform {

// Keeps a piece of work to one program at a time: the lock of a file that is there for nothing
// else, and stays behind, empty. The system takes it away when the program ends, however it does.
class FileLock {
public:
    FileLock() = default;
    ~FileLock();
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;

    // Once. `path` as in files.h; the file is made, for its owner alone. Does not wait: fails
    // when somebody else has the lock, also another FileLock of this program.
    Status take(std::string_view path);

private:
    std::intptr_t file_ = -1;
};

} // namespace ov::platform
