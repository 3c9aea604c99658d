// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/threads/coarse_clock.h"

#include <algorithm>
#include <chrono>
#include <thread>

namespace ov::modDictation {

// How many threads pay for work that is done in turns: as many as keep the processors busy while
// the others wait for a disk or a server.
class ListingPace {
public:
    static constexpr int mostThreads = 64;

    // Measures a turn; made at its start, on its thread.
    class Turn {
    public:
        double workSeconds() const {
            return static_cast<double>(platform::threadEffort().nanoseconds - start_.nanoseconds) *
                   1e-9;
        }
        // With what it waited for, but not for a processor.
        double seconds() const {
            if (platform::threadEffort().waits == start_.waits)
                return workSeconds();
            return std::chrono::duration<double>(Clock::now() - begun_).count();
        }

    private:
        using Clock = std::chrono::steady_clock;
        Clock::time_point begun_ = Clock::now();
        platform::ThreadEffort start_ = platform::threadEffort();
    };

    // At the end of the turn, on its thread.
    void add(const Turn& turn) { add(turn.seconds(), turn.workSeconds()); }
    void add(double seconds, double workSeconds) {
        constexpr double weight = 1.0 / 8; // of the newest
        seconds_ += (seconds - seconds_) * weight;
        work_ += (std::max(workSeconds, leastWork) - work_) * weight;
    }

    // Most of a turn goes by in waiting.
    bool isWaiting() const {
        constexpr double much = 3;
        return seconds_ > work_ * much;
    }

    int threads() const {
        return isWaiting()
                   ? static_cast<int>(std::min<double>(processors_ * seconds_ / work_, mostThreads))
                   : processors_;
    }

private:
    static constexpr double leastWork = 1e-6;

    int processors_ =
        std::clamp(static_cast<int>(std::thread::hardware_concurrency()), 1, mostThreads);
    double seconds_ = leastWork;
    double work_ = leastWork;
};

} // namespace ov::modDictation
