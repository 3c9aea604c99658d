// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "platform/posix/profile_lock.h"

#include <climits>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <fcntl.h>
#include <sys/file.h>
#include <thread>

namespace ov::platform {

namespace {

using std::chrono::milliseconds;

constexpr milliseconds patience{3000}; // the user-interface thread waits
constexpr milliseconds longestPause{16};

std::string directoryOf(const std::string& nativeFile) {
    std::array<char, PATH_MAX> resolved{};
    const std::string file =
        realpath(nativeFile.c_str(), resolved.data()) != nullptr ? resolved.data() : nativeFile;
    const std::size_t slash = file.rfind('/');
    return slash == std::string::npos ? "." : file.substr(0, slash + 1);
}

bool tryLock(int directory) noexcept {
    int result = 0;
    do
        result = flock(directory, LOCK_EX | LOCK_NB);
    while (result != 0 && errno == EINTR);
    // Any other error says that this file system knows no such lock.
    return result == 0 || errno != EWOULDBLOCK;
}

bool lockPatiently(int directory) {
    const auto end = std::chrono::steady_clock::now() + patience;
    for (milliseconds pause{1}; !tryLock(directory); pause = std::min(2 * pause, longestPause)) {
        if (std::chrono::steady_clock::now() >= end)
            return false;
        std::this_thread::sleep_for(pause);
    }
    return true;
}

} // namespace

ProfileLock::ProfileLock(const std::string& nativeFile)
    : directory_(open(directoryOf(nativeFile).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)),
      mayGoOn_(directory_.valid() ? lockPatiently(directory_.get()) : errno == EACCES) {}

ProfileLock::~ProfileLock() {
    // Not left to the closing: a process forked in the meantime would keep the lock.
    if (directory_.valid())
        flock(directory_.get(), LOCK_UN);
}

} // namespace ov::platform
