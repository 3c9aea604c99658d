// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "dictation/listing/listing_pace.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <thread>
#include <vector>

namespace ov::modDictation {
namespace {

double workSeconds() {
    return static_cast<double>(platform::threadEffort().nanoseconds) * 1e-9;
}

int threadsAfter(const ListingPace::Cost& cost) {
    ListingPace pace;
    for (int i = 0; i < 100; ++i)
        pace.add(cost);
    return pace.threads();
}

TEST(ListingPace, HasManyThreadsOnlyWhereTheyWait) {
    const int processors = static_cast<int>(std::thread::hardware_concurrency());
    EXPECT_EQ(threadsAfter({1e-4, 1e-4}), processors);
    EXPECT_EQ(threadsAfter({2e-4, 1e-4}), processors) << "now and then";
    EXPECT_GE(threadsAfter({1e-3, 1e-4}), std::min(processors * 9, ListingPace::mostThreads));
    EXPECT_EQ(threadsAfter({10, 1e-6}), ListingPace::mostThreads);
    EXPECT_EQ(threadsAfter({0, 0}), processors);
}

// Where more are ready than there are processors, each waits for one: that is no reason for more.
TEST(ListingPace, TakesNoQueueForAWait) {
    ListingPace pace;
    std::atomic<bool> over{false};
    std::atomic<bool> isCounted{false};
    std::vector<std::thread> busy;
    for (unsigned i = 0; i < 4 * std::thread::hardware_concurrency(); ++i)
        busy.emplace_back([&] {
            while (!over) {
            }
        });
    std::thread([&] {
        ListingPace::Meter meter;
        for (int turn = 0; turn < 40; ++turn) {
            meter.start();
            const double until = workSeconds() + 1e-3;
            std::this_thread::sleep_for(std::chrono::microseconds(50));
            while (workSeconds() < until) {
            }
            pace.add(meter.cost());
        }
        isCounted = platform::nanosecondsInQueue() > 0;
    }).join();
    over = true;
    for (std::thread& thread : busy)
        thread.join();
    if (!isCounted)
        GTEST_SKIP() << "the system does not count the time in the queue";
    EXPECT_FALSE(pace.isWaiting());
}

} // namespace
} // namespace ov::modDictation
