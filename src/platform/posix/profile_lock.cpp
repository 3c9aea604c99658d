// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "platform/posix/profile_lock.h"

#include <climits>

#include <array>
#include <cerrno>
#include <chrono>
#include <condition_variable>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <mutex>
#include <pthread.h>
#include <sys/file.h>
#include <sys/stat.h>

namespace ov::platform {

namespace {

constexpr std::chrono::seconds patience{1}; // the user-interface thread waits

struct State {
    std::string givenUp; // the directory that was waited for in vain
};

State& state() {
    thread_local State threadState;
    return threadState;
}

std::string directoryOf(const std::string& nativeFile) {
    std::array<char, PATH_MAX> resolved{};
    const std::string file =
        realpath(nativeFile.c_str(), resolved.data()) != nullptr ? resolved.data() : nativeFile;
    const std::size_t slash = file.rfind('/');
    return slash == std::string::npos ? "." : file.substr(0, slash + 1);
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
class Queue {
public:
    explicit Queue(int directory)
        : directory_(directory),
          turnstile_(openat(directory, "..", O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {}

    // Past the turnstile, which those of other folders beside this one use too.
    bool takeIfFree() { return lock(directory_, LOCK_NB); }

    bool tryLock() {
        const bool locked = passTurnstile(LOCK_NB) && lock(directory_, LOCK_NB);
        leaveTurnstile();
        return locked;
    }

    // No call waits for a limited time, and a signal that ends the wait would be the host's: so a
    // thread waits, which can be cancelled.
    bool wait() {
        pthread_t thread{};
        if (!start(thread))
            return false;
        std::unique_lock guard(mutex_);
        const bool done = changed_.wait_for(guard, patience, [this] { return locked_; });
        guard.unlock();
        if (!done)
            pthread_cancel(thread);
        pthread_join(thread, nullptr);
        leaveTurnstile();
        return locked_; // perhaps in the last moment
    }

private:
    bool passTurnstile(int howToWait) {
        return !turnstile_.valid() || lock(turnstile_.get(), howToWait);
    }
    void leaveTurnstile() {
        if (turnstile_.valid())
            flock(turnstile_.get(), LOCK_UN);
    }

    // The host's signals stay with its own threads.
    bool start(pthread_t& thread) {
        sigset_t all;
        sigset_t before;
        sigfillset(&all);
        pthread_sigmask(SIG_SETMASK, &all, &before);
        const bool started = pthread_create(&thread, nullptr, run, this) == 0;
        pthread_sigmask(SIG_SETMASK, &before, nullptr);
        return started;
    }

    static void* run(void* self) {
        auto& queue = *static_cast<Queue*>(self);
        int before = 0;
        pthread_setcanceltype(PTHREAD_CANCEL_ASYNCHRONOUS, &before); // flock() is no such point
        queue.passTurnstile(0);
        lock(queue.directory_, 0);
        queue.leaveTurnstile();
        pthread_setcanceltype(PTHREAD_CANCEL_DEFERRED, &before);
        const std::lock_guard guard(queue.mutex_);
        queue.locked_ = true;
        queue.changed_.notify_one();
        return nullptr;
    }

    int directory_;
    FileDescriptor turnstile_;
    std::mutex mutex_;
    std::condition_variable changed_;
    bool locked_ = false;
};

// Changes whenever a writer has replaced a file.
timespec lastChange(int directory) {
    struct stat info {};
    fstat(directory, &info);
    return info.st_mtim;
}

bool lockPatiently(int directory, const std::string& name) {
    std::string& givenUp = state().givenUp;
    Queue queue(directory);
    const timespec before = lastChange(directory);
    const bool locked = givenUp == name ? queue.takeIfFree() : queue.tryLock() || queue.wait();
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
    const std::string name = directoryOf(nativeFile);
    directory_ = FileDescriptor(open(name.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    mayGoOn_ = directory_.valid() ? lockPatiently(directory_.get(), name) : errno == EACCES;
}

ProfileLock::~ProfileLock() {
    // Not left to the closing: a process forked in the meantime would keep the lock.
    if (directory_.valid())
        flock(directory_.get(), LOCK_UN);
}

} // namespace ov::platform
