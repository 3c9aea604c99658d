// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "platform/profile_lock.h"

#include "platform/posix/file_descriptor.h"
#include "platform/threads/detached_thread.h"

#include <climits>

#include <array>
#include <cerrno>
#include <chrono>
#include <condition_variable>
#include <cstdlib>
#include <fcntl.h>
#include <memory>
#include <mutex>
#include <sys/file.h>
#include <sys/stat.h>
#include <thread>

namespace ov::platform {

namespace {

constexpr std::chrono::seconds patience{1}; // the user-interface thread waits

struct LockState {
    std::string givenUp; // the directory that was waited for in vain
};

LockState& lockState() {
    thread_local LockState ofThread;
    return ofThread;
}

// Of the file itself where the path is a link.
std::string resolvedDirectoryOf(const std::string& nativeFile) {
    std::array<char, PATH_MAX> resolved{};
    return nativeDirectoryOf(
        realpath(nativeFile.c_str(), resolved.data()) != nullptr ? resolved.data() : nativeFile);
}

// False when somebody else has the lock. Any other error says that this file system knows no such
// lock, or no more of them.
bool lock(int directory, int howToWait) {
    int result = 0;
    do
        result = flock(directory, LOCK_EX | howToWait);
    while (result != 0 && errno == EINTR);
    return result == 0 || errno != EWOULDBLOCK;
}

// Locks a directory behind a turnstile, the directory above: whoever is through is the next, so
// that nobody who has just let go can take the lock again before those who were woken up.
class Queue : public std::enable_shared_from_this<Queue> {
public:
    // The lock is that of the open directory, which `directory` and the copy here share.
    explicit Queue(int directory)
        : directory_(fcntl(directory, F_DUPFD_CLOEXEC, 0)),
          turnstile_(openat(directory, "..", O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {}

    // Past the turnstile, which those of other folders beside this one use too.
    bool takeIfFree() { return lock(directory_.get(), LOCK_NB); }

    // A thread of ours that has given up waiting may just have come by the lock, and lets go of it.
    bool takeIfSoonFree() {
        constexpr int tries = 5;
        for (int i = 1; i < tries; ++i) {
            if (takeIfFree())
                return true;
            std::this_thread::sleep_for(std::chrono::milliseconds(2));
        }
        return takeIfFree();
    }

    bool tryLock() {
        const bool locked = passTurnstile(LOCK_NB) && takeIfFree();
        leaveTurnstile();
        return locked;
    }

    // No call waits for a limited time, and a signal that ends the wait would be the host's: so a
    // thread waits, and is left to end by itself when it takes too long.
    bool wait() {
        if (!startDetached([queue = shared_from_this()] { queue->takeTurn(); }))
            return false;
        std::unique_lock guard(mutex_);
        changed_.wait_for(guard, patience, [this] { return locked_; });
        abandoned_ = !locked_;
        guard.unlock();
        leaveTurnstile(); // the thread may still stand in it, and others wait behind
        return !abandoned_;
    }

private:
    bool passTurnstile(int howToWait) {
        return !turnstile_.valid() || lock(turnstile_.get(), howToWait);
    }
    void leaveTurnstile() {
        if (turnstile_.valid())
            flock(turnstile_.get(), LOCK_UN);
    }
    bool isAbandoned() {
        const std::lock_guard guard(mutex_);
        return abandoned_;
    }

    void takeTurn() {
        passTurnstile(0);
        if (!isAbandoned())
            lock(directory_.get(), 0);
        leaveTurnstile();
        const std::lock_guard guard(mutex_);
        locked_ = !abandoned_;
        if (abandoned_)
            flock(directory_.get(), LOCK_UN);
        changed_.notify_one();
    }

    FileDescriptor directory_;
    FileDescriptor turnstile_;
    std::mutex mutex_;
    std::condition_variable changed_;
    bool locked_ = false;
    bool abandoned_ = false; // nobody waits for the lock any more
};

// Changes whenever a writer has replaced a file.
timespec lastChange(int directory) {
    struct stat info {};
    fstat(directory, &info);
    return info.st_mtim;
}

bool lockPatiently(int directory, const std::string& name) {
    std::string& givenUp = lockState().givenUp;
    const auto queue = std::make_shared<Queue>(directory);
    const timespec before = lastChange(directory);
    const bool locked =
        givenUp == name ? queue->takeIfSoonFree() : queue->tryLock() || queue->wait();
    const timespec after = lastChange(directory);
    const bool stands = before.tv_sec == after.tv_sec && before.tv_nsec == after.tv_nsec;
    if (!locked && stands)
        givenUp = name;
    else if (givenUp == name)
        givenUp.clear();
    return locked;
}

} // namespace

ProfileLock::ProfileLock(const std::string& nativeFile) {
    const std::string name = resolvedDirectoryOf(nativeFile);
    FileDescriptor directory(open(name.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    mayGoOn_ = directory.valid() ? lockPatiently(directory.get(), name) : errno == EACCES;
    directory_ = directory.release();
}

ProfileLock::~ProfileLock() {
    // Not left to the closing: a process forked in the meantime would keep the lock.
    if (const FileDescriptor directory(static_cast<int>(directory_)); directory.valid())
        flock(directory.get(), LOCK_UN);
}

} // namespace ov::platform
