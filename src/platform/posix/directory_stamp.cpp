// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "platform/directories.h"
#include "platform/posix/file_descriptor.h"
#include "platform/posix/file_times.h"

#include <atomic>
#include <fcntl.h>
#include <linux/magic.h>
#include <string>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <sys/vfs.h>

namespace ov::platform {

namespace {

std::int64_t nanosecondsOf(const statx_timestamp& time) noexcept {
    return nanoseconds({time.tv_sec, time.tv_nsec});
}

// A process may have a thousand files open, most of which are its host's.
constexpr int mostHeld = 192;
std::atomic<int> held{0};

// Asks the server, as opening the directory would: what the system remembers of it may be old.
std::optional<DirectoryStamp> stampAt(int directory, const char* name, int flags = 0) {
    struct statx info {};
    constexpr unsigned wanted = STATX_TYPE | STATX_INO | STATX_MTIME | STATX_CTIME;
    if (statx(directory, name, AT_STATX_FORCE_SYNC | flags, wanted, &info) != 0 ||
        !S_ISDIR(info.stx_mode))
        return std::nullopt;
    return DirectoryStamp{{makedev(info.stx_dev_major, info.stx_dev_minor), info.stx_ino},
                          nanosecondsOf(info.stx_mtime),
                          nanosecondsOf(info.stx_ctime)};
}

} // namespace

std::optional<DirectoryStamp> directoryStamp(std::string_view path) {
    return stampAt(AT_FDCWD, toNativePath(path).c_str());
}

HeldDirectory::HeldDirectory(std::string_view path) {
    hold(AT_FDCWD, toNativePath(path).c_str());
}

HeldDirectory::HeldDirectory(const HeldDirectory& above, std::string_view name) {
    hold(above.handle_, std::string(name).c_str());
}

void HeldDirectory::hold(int directory, const char* name) {
    if (++held <= mostHeld)
        handle_ = ::openat(directory, name, O_PATH | O_DIRECTORY | O_CLOEXEC);
    if (!isHeld())
        --held;
}

HeldDirectory::~HeldDirectory() {
    if (!isHeld())
        return;
    ::close(handle_);
    --held;
}

std::optional<DirectoryStamp> HeldDirectory::stamp() const {
    return stampAt(handle_, "", AT_EMPTY_PATH);
}

std::optional<DirectoryStamp> HeldDirectory::stampOf(std::string_view name) const {
    return stampAt(handle_, std::string(name).c_str());
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
