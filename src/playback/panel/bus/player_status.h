// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <cstdint>
#include <string>

namespace ov {

// What a player does at a moment, as it is told to other programs.
struct PlayerStatus {
    enum class Mode : std::uint8_t {
        stopped, // nothing is open
        playing,
        paused, // open, and silent
    };

    Mode mode = Mode::stopped;
    std::string path; // of what is open
    std::chrono::milliseconds position{};
    std::chrono::milliseconds length{};
    std::int32_t speedPercent = 100;
    double volume = 1; // 0 to 1
    bool canPlay = false;

    bool isOpen() const noexcept { return mode != Mode::stopped; }
};

} // namespace ov
