// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "platform/threads/coarse_clock.h"

#include <ctime>

namespace ov::platform {

std::int64_t coarseMilliseconds() noexcept {
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC_COARSE, &now);
    return std::int64_t{now.tv_sec} * 1000 + now.tv_nsec / 1'000'000;
}

} // namespace ov::platform
