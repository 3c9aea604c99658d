// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "platform/readable_file.h"

#include "platform/files.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace ov::platform {

ReadableFile::~ReadableFile() {
    if (handle_ >= 0)
        ::close(static_cast<int>(handle_));
}

ReadableFile::ReadableFile(ReadableFile&& other) noexcept
    : handle_(std::exchange(other.handle_, -1)) {}

ReadableFile& ReadableFile::operator=(ReadableFile&& other) noexcept {
    std::swap(handle_, other.handle_);
    return *this;
}

std::optional<ReadableFile> ReadableFile::open(std::string_view path) {
    ReadableFile file;
    // Non-blocking, so that a pipe in a file's place cannot hold us up.
    file.handle_ = ::open(toNativePath(path).c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    struct stat info {};
    if (file.handle_ < 0 || fstat(static_cast<int>(file.handle_), &info) != 0 ||
        !S_ISREG(info.st_mode))
        return std::nullopt;
    return file;
}

std::optional<std::int64_t> ReadableFile::size() const noexcept {
    struct stat info {};
    if (fstat(static_cast<int>(handle_), &info) != 0)
        return std::nullopt;
    return info.st_size;
}

std::int64_t ReadableFile::read(void* target, std::size_t count,
                                std::int64_t place) const noexcept {
    ssize_t got = 0;
    do
        got = pread(static_cast<int>(handle_), target, count, place);
    while (got < 0 && errno == EINTR);
    return got;
}

} // namespace ov::platform
