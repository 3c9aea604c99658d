// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "platform/file_access.h"
#include "platform/status.h"

#include <string>
#include <string_view>
#include <sys/types.h>
#include <unistd.h>
#include <utility>

// Small things that every file of this folder needs.

namespace ov::platform {

// Owns an open file; closes it.
class FileDescriptor {
public:
    FileDescriptor() = default;
    explicit FileDescriptor(int handle) noexcept : handle_(handle) {}
    ~FileDescriptor() { reset(); }
    FileDescriptor(FileDescriptor&& other) noexcept : handle_(std::exchange(other.handle_, -1)) {}
    FileDescriptor& operator=(FileDescriptor&& other) noexcept {
        if (this != &other) {
            reset();
            handle_ = std::exchange(other.handle_, -1);
        }
        return *this;
    }
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;

    bool valid() const noexcept { return handle_ >= 0; }
    int get() const noexcept { return handle_; }
    int release() noexcept { return std::exchange(handle_, -1); }
    void reset() noexcept {
        if (handle_ >= 0)
            ::close(std::exchange(handle_, -1));
    }

private:
    int handle_ = -1;
};

// The whole content; false with errno set.
bool writeAll(int handle, std::string_view content);

// What open() and mkdir() are asked for, of which the umask takes away.
constexpr mode_t modeFor(Access access, mode_t everybody) noexcept {
    return access == Access::ownerOnly ? everybody & 0700U : everybody;
}

// Of a native path, ending in "/"; the current one is "./".
std::string nativeDirectoryOf(const std::string& native);

// errno as a Status: "<path>: <reason>".
Status systemError(std::string_view nativePath);

} // namespace ov::platform
