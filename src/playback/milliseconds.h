// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace ov {

// What players are asked for and kept places count in.
constexpr std::int64_t msOfSecond = 1000;

} // namespace ov
