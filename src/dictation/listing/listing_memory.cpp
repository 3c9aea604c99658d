// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "dictation/listing/listing_memory.h"

namespace ov::modDictation {

using platform::DirectoryTimes;

namespace {

template <typename Unit, typename Clock>
std::int64_t timeOf() {
    return std::chrono::duration_cast<Unit>(Clock::now().time_since_epoch()).count();
}

} // namespace

ListingMemory::Moment ListingMemory::Moment::now() {
    return {timeOf<std::chrono::nanoseconds, std::chrono::system_clock>(),
            timeOf<std::chrono::milliseconds, std::chrono::steady_clock>()};
}

DirectoryTimes TimesByDevice::of(const FolderReader& folder) {
    const std::uint64_t device = folder.stamp().id.device;
    {
        const std::lock_guard lock(mutex_);
        if (const auto known = times_.find(device); known != times_.end())
            return known->second;
    }
    const DirectoryTimes times = folder.times(); // may take its time
    const std::lock_guard lock(mutex_);
    return times_.emplace(device, times).first->second;
}

void TimesByDevice::forget() {
    const std::lock_guard lock(mutex_);
    times_.clear();
}

bool isSettled(const FolderListing& listing, const ListingMemory::Moment& begun,
               std::chrono::nanoseconds seenFor, bool trustsUnknown) {
    constexpr std::int64_t second = 1'000'000'000; // in nanoseconds
    const platform::DirectoryStamp& stamp = listing.stamp;
    if (listing.hasLinks || (listing.times == DirectoryTimes::unknown && !trustsUnknown))
        return false;
    if (listing.times == DirectoryTimes::ofOurClock)
        return std::chrono::nanoseconds(begun.wall - stamp.changed) > grainOfTimes;
    // Servers also hand out old file systems, which tell nothing of a folder's names.
    const bool isFine = stamp.modified % second != 0 || stamp.changed % second != 0;
    return isFine && seenFor > grainOfTimes;
}

} // namespace ov::modDictation
