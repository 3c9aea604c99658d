// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>

// Pedals of adapters for old game ports are the ends of an axis.

namespace ov::platform::evdev {

// An axis as two pedals, one for each direction from where it rests. Whichever way there is next to
// none, as from the end that a single pedal rests at, is no pedal.
class Axis {
public:
    Axis() = default;
    Axis(std::int32_t lowest, std::int32_t highest, std::int32_t rest) noexcept
        : lowest_(lowest), highest_(highest), rest_(rest) {}

    // Down from half the way, up again below a third of it, so that one that trembles is pressed
    // once.
    std::array<bool, 2> moveTo(std::int32_t value) noexcept {
        down_[0] = isDown(rest_ - static_cast<double>(lowest_), rest_ - static_cast<double>(value),
                          down_[0]);
        down_[1] = isDown(highest_ - static_cast<double>(rest_), value - static_cast<double>(rest_),
                          down_[1]);
        return down_;
    }

private:
    bool isDown(double way, double gone, bool was) const noexcept {
        constexpr double leastWay = 0.25; // of the whole
        const double whole = static_cast<double>(highest_) - lowest_;
        return whole > 0 && way >= leastWay * whole && gone >= way / (was ? 3 : 2);
    }

    std::int32_t lowest_ = 0;
    std::int32_t highest_ = 0;
    std::int32_t rest_ = 0;
    std::array<bool, 2> down_{};
};

} // namespace ov::platform::evdev
