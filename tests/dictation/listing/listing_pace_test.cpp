// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "dictation/listing/listing_pace.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <thread>

namespace ov::modDictation {
namespace {

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

} // namespace
} // namespace ov::modDictation
