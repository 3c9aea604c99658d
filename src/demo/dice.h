// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <random>
#include <span>

namespace ov::demo {

// A repeatable source of choices: the same seed gives the same choices with every compiler and
// library, which the distributions of <random> do not promise.
class Dice {
public:
    explicit Dice(std::uint32_t seed) : generator_(seed) {}

    // From 0 to sides - 1; `sides` is at least 1.
    std::uint32_t below(std::uint32_t sides) {
        return static_cast<std::uint32_t>((std::uint64_t{generator_()} * sides) >> 32U);
    }
    bool chance(std::uint32_t percent) { return below(100) < percent; }

    template <typename T>
    const T& pick(std::span<const T> choices) {
        return choices[below(static_cast<std::uint32_t>(choices.size()))];
    }

private:
    std::mt19937 generator_;
};

} // namespace ov::demo
