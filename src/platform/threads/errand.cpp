// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "platform/threads/errand.h"

#include <atomic>
#include <functional>
#include <mutex>
#include <set>
#include <system_error>

namespace ov::platform {

namespace {

struct SilentDirectories {
    std::mutex mutex;
    std::multiset<std::string, std::less<>> all;
};

// Never destroyed: a call may come back in the end of the program.
SilentDirectories& silent() {
    static auto* const directories = new SilentDirectories;
    return *directories;
}

std::atomic<bool>& withoutEnd() {
    static std::atomic<bool> waits{false};
    return waits;
}

std::string_view directoryOf(std::string_view path) {
    return path.substr(0, path.rfind('\\') + 1);
}

} // namespace

void waitWithoutEnd() {
    withoutEnd() = true;
}

bool isWaitedForWithoutEnd() {
    return withoutEnd();
}

CalledPlace::CalledPlace(std::string_view path) : directory_(directoryOf(path)) {}

CalledPlace::~CalledPlace() {
    if (!isLeft_)
        return;
    const std::lock_guard guard(silent().mutex);
    silent().all.erase(silent().all.find(directory_));
}

void CalledPlace::leave() {
    const std::lock_guard guard(silent().mutex);
    silent().all.insert(directory_);
    isLeft_ = true;
}

bool CalledPlace::isSilent(std::string_view path) {
    const std::lock_guard guard(silent().mutex);
    return silent().all.contains(directoryOf(path));
}

Status noAnswer(std::string_view path) {
    return {static_cast<int>(std::errc::timed_out), toNativePath(path), "does not answer"};
}

} // namespace ov::platform
