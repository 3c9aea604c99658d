// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "platform/threads/this_thread.h"

#include "platform/posix/file_descriptor.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <ctime>
#include <fcntl.h>
#include <sched.h>
#include <string_view>
#include <sys/resource.h>
#include <unistd.h>

namespace ov::platform {

namespace {

bool schedule(int policy, int priority) noexcept {
    sched_param wanted{};
    wanted.sched_priority = priority;
    return ::sched_setscheduler(0, policy, &wanted) == 0;
}

} // namespace

// Not with the times of getrusage(), which the system counts by ticks of some milliseconds.
ThreadEffort threadEffort() noexcept {
    timespec work{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &work);
    rusage usage{};
    getrusage(RUSAGE_THREAD, &usage);
    return {std::int64_t{work.tv_sec} * 1'000'000'000 + work.tv_nsec, usage.ru_nvcsw};
}

// The second of the numbers that the system keeps of each thread.
std::int64_t nanosecondsInQueue() noexcept {
    thread_local const FileDescriptor file(
        ::open("/proc/thread-self/schedstat", O_RDONLY | O_CLOEXEC));
    std::array<char, 64> room{};
    const ssize_t size = ::pread(file.get(), room.data(), room.size(), 0);
    const std::string_view text(room.data(), size > 0 ? static_cast<std::size_t>(size) : 0);
    const std::string_view second = text.substr(std::min(text.find(' '), text.size()));
    std::int64_t number = 0;
    if (!second.empty())
        std::from_chars(second.data() + 1, second.data() + second.size(), number);
    return number;
}

void stepBack() noexcept {
    constexpr int niceness = 10;
    ::setpriority(PRIO_PROCESS, static_cast<id_t>(::gettid()), niceness);
}

bool stepForward() noexcept {
    return schedule(SCHED_RR | SCHED_RESET_ON_FORK, sched_get_priority_min(SCHED_RR));
}

bool mayStepForward() noexcept {
    const int before = ::sched_getscheduler(0);
    if (before == SCHED_RR || before == SCHED_FIFO)
        return true;
    if (!schedule(SCHED_RR, sched_get_priority_min(SCHED_RR)))
        return false;
    schedule(before, 0);
    return true;
}

} // namespace ov::platform
