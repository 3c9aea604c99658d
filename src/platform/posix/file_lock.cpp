// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "platform/file_lock.h"

#include "platform/files.h"
#include "platform/posix/file_descriptor.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>

namespace ov::platform {

Status FileLock::take(std::string_view path) {
    const std::string native = toNativePath(path);
    FileDescriptor file(
        ::open(native.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, modeFor(Access::ownerOnly, 0666)));
    if (!file.valid() || flock(file.get(), LOCK_EX | LOCK_NB) != 0)
        return systemError(native);
    file_ = file.release();
    return {};
}

FileLock::~FileLock() {
    if (const FileDescriptor file(static_cast<int>(file_)); file.valid())
        flock(file.get(), LOCK_UN);
}

} // namespace ov::platform
