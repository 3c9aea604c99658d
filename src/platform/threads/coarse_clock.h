// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>

namespace ov::platform {

// A clock for hot loops: steady, a few nanoseconds to ask, a few milliseconds coarse.
std::int64_t coarseMilliseconds() noexcept;

} // namespace ov::platform
