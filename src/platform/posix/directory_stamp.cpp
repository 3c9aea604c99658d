// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "platform/directories.h"
#include "platform/posix/file_descriptor.h"
#include "platform/posix/file_times.h"

#include <fcntl.h>
#include <linux/magic.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <sys/vfs.h>

namespace ov::platform {

namespace {

std::int64_t nanosecondsOf(const statx_timestamp& time) noexcept {
    return nanoseconds({time.tv_sec, time.tv_nsec});
}

} // namespace

// Asks the server, as opening the directory would: what the system remembers of it may be old.
std::optional<DirectoryStamp> directoryStamp(std::string_view path) {
    struct statx info {};
    constexpr unsigned wanted = STATX_TYPE | STATX_INO | STATX_MTIME | STATX_CTIME;
    if (statx(AT_FDCWD, toNativePath(path).c_str(), AT_STATX_FORCE_SYNC, wanted, &info) != 0 ||
        !S_ISDIR(info.stx_mode))
        return std::nullopt;
    return DirectoryStamp{{makedev(info.stx_dev_major, info.stx_dev_minor), info.stx_ino},
                          nanosecondsOf(info.stx_mtime),
                          nanosecondsOf(info.stx_ctime)};
}

DirectoryTimes DirectoryReader::times() const {
    struct statfs info {};
    if (fstatfs(handle_, &info) != 0)
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
