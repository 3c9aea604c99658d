// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "platform/threads/coarse_clock.h"

#include <ctime>
#include <sys/resource.h>

namespace ov::platform {

std::int64_t coarseMilliseconds() noexcept {
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC_COARSE, &now);
    return std::int64_t{now.tv_sec} * 1000 + now.tv_nsec / 1'000'000;
}

ThreadEffort threadEffort() noexcept {
    rusage usage{};
    getrusage(RUSAGE_THREAD, &usage);
    const auto nanoseconds = [](const timeval& time) {
        return (std::int64_t{time.tv_sec} * 1'000'000 + time.tv_usec) * 1000;
    };
    return {nanoseconds(usage.ru_utime) + nanoseconds(usage.ru_stime), usage.ru_nvcsw};
}

} // namespace ov::platform
