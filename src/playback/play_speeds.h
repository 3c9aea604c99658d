// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>

namespace ov {

// Percent: what a player offers, slowest first.
constexpr std::int32_t usualPlaySpeed = 100;
constexpr std::array<std::int32_t, 9> playSpeeds{50,  75,  90, usualPlaySpeed, 110, 125,
                                                 150, 175, 200};

} // namespace ov
