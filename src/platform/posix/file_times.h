// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/directories.h"

#include <sys/stat.h>

namespace ov::platform {

inline std::int64_t nanoseconds(const timespec& time) noexcept {
    constexpr std::int64_t perSecond = 1'000'000'000;
    return time.tv_sec * perSecond + time.tv_nsec;
}

inline DirectoryStamp stampOfStatus(const struct stat& info) noexcept {
    return {{info.st_dev, info.st_ino}, nanoseconds(info.st_mtim), nanoseconds(info.st_ctim)};
}

} // namespace ov::platform
