// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>

// What every call of the slow store goes through. Used from all its threads.

namespace ov::slow_store {

class Gate {
public:
    void setDelay(std::chrono::milliseconds delay) {
        const std::lock_guard guard(mutex_);
        delay_ = delay;
    }

    // From now on calls of this kind ("any" of all kinds) on `path` and below it wait until
    // released, or until `longestHang` is over, so that nothing hangs for ever by a mistake. A
    // later hang() takes the place of this one.
    void hang(std::string kind, std::string path) {
        const std::lock_guard guard(mutex_);
        hanging_ = true;
        kind_ = std::move(kind);
        path_ = std::move(path);
        changed_.notify_all();
    }
    void release() {
        const std::lock_guard guard(mutex_);
        hanging_ = false;
        changed_.notify_all();
    }

    // Delays the caller; while it hangs, says so on the standard output. False for a call that was
    // not released.
    bool pass(std::string_view kind, std::string_view path) {
        std::unique_lock guard(mutex_);
        const auto delay = delay_;
        const auto mayPass = [&] { return !catches(kind, path); };
        if (!mayPass()) {
            say("hanging", kind, path);
            if (!changed_.wait_for(guard, longestHang, mayPass)) {
                say("timed-out", kind, path);
                return false;
            }
        }
        guard.unlock();
        if (delay.count() > 0)
            std::this_thread::sleep_for(delay);
        return true;
    }

private:
    static constexpr std::chrono::seconds longestHang{30};

    static void say(const char* what, std::string_view kind, std::string_view path) {
        std::printf("%s %.*s %.*s\n", what, static_cast<int>(kind.size()), kind.data(),
                    static_cast<int>(path.size()), path.data());
        std::fflush(stdout);
    }
    bool catches(std::string_view kind, std::string_view path) const {
        const bool below = path.starts_with(path_) && (path.size() == path_.size() ||
                                                       path_.empty() || path[path_.size()] == '/');
        return hanging_ && below && (kind_ == "any" || kind_ == kind);
    }

    std::mutex mutex_;
    std::condition_variable changed_;
    std::chrono::milliseconds delay_{0};
    bool hanging_ = false;
    std::string kind_;
    std::string path_;
};

} // namespace ov::slow_store
