// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "platform/directories.h"

#include "platform/posix/file_descriptor.h"
#include "platform/posix/file_times.h"

#include <linux/magic.h>
#include <sys/stat.h>
#include <sys/vfs.h>

namespace ov::platform {

std::optional<DirectoryStamp> directoryStamp(std::string_view path) {
    struct stat info {};
    if (stat(toNativePath(path).c_str(), &info) != 0 || !S_ISDIR(info.st_mode))
        return std::nullopt;
    return stampOfStatus(info);
}

DirectoryTimes directoryTimes(std::string_view path) {
    struct statfs info {};
    if (statfs(toNativePath(path).c_str(), &info) != 0)
        return DirectoryTimes::unknown;
    switch (info.f_type) {
    case EXT4_SUPER_MAGIC: // and its forerunners
    case XFS_SUPER_MAGIC:
    case BTRFS_SUPER_MAGIC:
    case F2FS_SUPER_MAGIC:
    case TMPFS_MAGIC:
    case OVERLAYFS_SUPER_MAGIC:
        return DirectoryTimes::ofOurClock;
    case NFS_SUPER_MAGIC:
    case CIFS_SUPER_MAGIC:
    case SMB2_SUPER_MAGIC:
        return DirectoryTimes::ofItsClock;
    default:
        return DirectoryTimes::unknown;
    }
}

} // namespace ov::platform
