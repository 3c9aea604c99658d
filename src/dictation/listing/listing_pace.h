// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/threads/this_thread.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <thread>
#include <utility>

namespace ov::modDictation {

// How many threads pay for work that is done in turns: as many as keep the processors busy while
// the others wait for a disk or a server.
class ListingPace {
public:
    static constexpr int mostThreads = 64;

    struct Cost {
        double seconds = 0; // with what was waited for, but not for a processor
        double work = 0;    // seconds
    };

    // Measures the turns of its thread.
    class Meter {
    public:
        void start() {
            begun_ = Clock::now();
            start_ = platform::threadEffort();
        }
        // At the end, before anything is waited for that has nothing to do with the disk.
        Cost cost() {
            constexpr double unit = 1e-9;
            const platform::ThreadEffort now = platform::threadEffort();
            const double work = static_cast<double>(now.nanoseconds - start_.nanoseconds) * unit;
            if (now.waits == start_.waits)
                return {work, work};
            const double all = std::chrono::duration<double>(Clock::now() - begun_).count();
            // With what came since the last time, when the processors were as busy.
            const std::int64_t before = std::exchange(queued_, platform::nanosecondsInQueue());
            return {std::max(all - static_cast<double>(queued_ - before) * unit, work), work};
        }

    private:
        using Clock = std::chrono::steady_clock;
        Clock::time_point begun_;
        platform::ThreadEffort start_;
        std::int64_t queued_ = platform::nanosecondsInQueue();
    };

    void add(const Cost& cost) {
        constexpr double weight = 1.0 / 8; // of the newest
        seconds_ += (cost.seconds - seconds_) * weight;
        work_ += (std::max(cost.work, leastWork) - work_) * weight;
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
