// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include <algorithm>
#include <cstdint>
#include <optional>

namespace ov {

// A stretch of a dictation that is played again and again, between two marks, in units of the
// device.
class PlayLoop {
public:
    // Begins it, ends it, takes it away, in turn. Who marks backwards means the same stretch; one
    // shorter than `least` is taken away.
    void mark(std::int32_t position, std::int32_t least) {
        isTooShort_ = false;
        if (!from_) {
            from_ = position;
            return;
        }
        const auto [first, last] = std::minmax(*from_, position);
        const bool isTooShort = !to_ && last - first < least;
        if (to_ || isTooShort)
            *this = PlayLoop(isTooShort);
        else
            *this = {first, last};
    }

    PlayLoop() = default;

    bool isMarked() const { return from_.has_value(); }
    bool isWhole() const { return to_.has_value(); }
    // What the last mark would have ended.
    bool isTooShort() const { return isTooShort_; }
    // A play from there comes to its end.
    bool isBefore(std::int32_t position) const { return to_ && position < *to_; }
    std::int32_t from() const { return from_.value_or(0); }
    std::int32_t to() const { return to_.value_or(0); }

private:
    explicit PlayLoop(bool isTooShort) : isTooShort_(isTooShort) {}
    PlayLoop(std::int32_t from, std::int32_t to) : from_(from), to_(to) {}

    std::optional<std::int32_t> from_;
    std::optional<std::int32_t> to_;
    bool isTooShort_ = false;
};

} // namespace ov
