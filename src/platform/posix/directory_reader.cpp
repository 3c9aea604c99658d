// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "platform/directories.h"
#include "platform/posix/file_descriptor.h"
#include "platform/posix/file_times.h"

#include <cerrno>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>
#include <utility>

namespace ov::platform {

namespace {

// Large enough that a directory of some hundred long names takes one or two calls; small enough
// to stay in the second-level cache while it is read.
constexpr std::size_t listingBufferSize = std::size_t{128} * 1024;

// The record that the kernel writes: inode, offset, record length, type, name.
constexpr std::size_t lengthOffset = 16;
constexpr std::size_t typeOffset = 18;
constexpr std::size_t nameOffset = 19;

bool isDotOrDotDot(const char* name) noexcept {
    return name[0] == '.' && (name[1] == '\0' || (name[1] == '.' && name[2] == '\0'));
}

} // namespace

DirectoryReader::DirectoryReader() : buffer_(listingBufferSize, '\0') {}

DirectoryReader::~DirectoryReader() {
    close();
}

void DirectoryReader::close() noexcept {
    FileDescriptor(std::exchange(handle_, -1)).reset();
    position_ = 0;
    end_ = 0;
}

Status DirectoryReader::open(std::string_view directory) {
    close();
    status_ = {};
    native_ = toNativePath(directory);
    FileDescriptor handle(::open(native_.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    struct stat info {};
    if (!handle.valid() || fstat(handle.get(), &info) != 0)
        return status_ = systemError(native_);
    stamp_ = stampOfStatus(info);
    handle_ = handle.release();
    return {};
}

bool DirectoryReader::fill() {
    const long bytes = syscall(SYS_getdents64, handle_, buffer_.data(), buffer_.size());
    if (bytes < 0)
        status_ = systemError(native_);
    position_ = 0;
    end_ = bytes > 0 ? static_cast<std::size_t>(bytes) : 0;
    return bytes > 0;
}

bool DirectoryReader::next(DirectoryEntry& entry) {
    while (handle_ >= 0) {
        if (position_ >= end_ && !fill()) {
            close();
            return false;
        }
        const char* record = buffer_.data() + position_;
        std::uint16_t length = 0;
        std::memcpy(&length, record + lengthOffset, sizeof length);
        position_ += length;
        const char* name = record + nameOffset;
        if (isDotOrDotDot(name))
            continue;
        entry.name = name;
        setKind(entry, static_cast<unsigned char>(record[typeOffset]), name);
        return true;
    }
    return false;
}

void DirectoryReader::setKind(DirectoryEntry& entry, unsigned char type, const char* name) const {
    entry.isLink = type == DT_LNK;
    if (type == DT_REG) {
        entry.kind = FileKind::file;
        return;
    }
    if (type == DT_DIR) {
        entry.kind = FileKind::directory;
        return;
    }
    entry.kind = FileKind::other;
    if (type != DT_LNK && type != DT_UNKNOWN)
        return;
    struct stat info {};
    if (type == DT_UNKNOWN && fstatat(handle_, name, &info, AT_SYMLINK_NOFOLLOW) == 0)
        entry.isLink = S_ISLNK(info.st_mode);
    if (fstatat(handle_, name, &info, 0) != 0)
        entry.kind = FileKind::missing;
    else if (S_ISREG(info.st_mode))
        entry.kind = FileKind::file;
    else if (S_ISDIR(info.st_mode))
        entry.kind = FileKind::directory;
}

} // namespace ov::platform
