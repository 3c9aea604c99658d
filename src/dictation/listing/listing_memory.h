// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "dictation/listing/folder_listing.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <string>

namespace ov::modDictation {

// What is known of folders from an earlier time, so that those which are as they were need not be
// listed again. All functions may be called from any thread.
class ListingMemory {
public:
    // By the two clocks.
    struct Moment {
        std::int64_t wall = 0;   // nanoseconds since 1970
        std::int64_t steady = 0; // milliseconds

        static Moment now();
    };
    using StampOf = std::function<std::optional<platform::DirectoryStamp>(const FolderListing&)>;

    ListingMemory() = default;
    virtual ~ListingMemory() = default;
    ListingMemory(const ListingMemory&) = delete;
    ListingMemory& operator=(const ListingMemory&) = delete;

    // The directory's listing if it is as it was. Asks the file system once, and by `stampOf`,
    // which gets the listing as it is remembered, when that is given.
    virtual std::optional<FolderListing> unchanged(const std::string& directory,
                                                   const StampOf& stampOf) = 0;
    // Asked before a folder is listed.
    virtual Moment begin() const = 0;
    // For the listing of the folder that has just been opened.
    virtual platform::DirectoryTimes timesOf(const FolderReader& folder) = 0;
    // Takes a listing of the directory, from end to end, that began then.
    virtual void keep(const std::string& directory, const FolderListing& listing,
                      const Moment& begun) = 0;
};

// What the times of file systems are worth: asks each device once. For any number of threads.
class TimesByDevice {
public:
    platform::DirectoryTimes of(const FolderReader& folder);
    void forget();

private:
    std::mutex mutex_; // guards what follows
    std::map<std::uint64_t, platform::DirectoryTimes> times_;
};

// No file system's times are coarser, and no kernel's clock lags as much.
constexpr std::chrono::seconds grainOfTimes{2};

// Whether a listing that began then may be believed as long as the times of its folder stay: they
// must have been old enough, as a change right after it could otherwise bear the same time. How old
// is known where the file system goes by this machine's clock. Where a server's clock counts, the
// same times must have been seen for as long (`seenFor`), and be finer than whole seconds, which
// those of file systems that know no more may not be worth anything. Folders with links are listed
// always, and so are file systems of which it is not known what their times are worth, unless the
// administrator knows (`trustsUnknown`).
bool isSettled(const FolderListing& listing, const ListingMemory::Moment& begun,
               std::chrono::nanoseconds seenFor, bool trustsUnknown);

} // namespace ov::modDictation
