// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>

// A clock for hot loops: steady, a few nanoseconds to ask, a few milliseconds coarse.

namespace ov::platform {

std::int64_t coarseMilliseconds() noexcept;

} // namespace ov::platform
