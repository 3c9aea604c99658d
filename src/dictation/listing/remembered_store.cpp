// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "dictation/listing/remembered_store.h"

#include "platform/threads/detached_thread.h"

#include <chrono>
#include <memory>
#include <utility>

namespace ov::modDictation {

namespace {

std::size_t footprint(const std::string& directory, const FolderListing& listing) {
    constexpr std::size_t ofTheMap = 128;
    return ofTheMap + directory.size() + listing.bytes();
}

} // namespace

void RememberedStore::startSearch() {
    if (wasClockSetBack())
        forget();
    times_.forget(); // a device may come back as another
    const std::lock_guard lock(mutex_);
    ++search_;
}

// A folder may then get a time that it had before.
bool RememberedStore::wasClockSetBack() {
    using namespace std::chrono;
    const Moment now = begin();
    const nanoseconds ahead = nanoseconds(now.wall) - milliseconds(now.steady);
    const std::lock_guard lock(mutex_);
    return ahead + grainOfTimes < nanoseconds(std::exchange(clockAhead_, ahead.count()));
}

// Aside: to give back the memory of a large store takes longer than a window should stand still.
void RememberedStore::forget() {
    const auto forgotten = std::make_shared<decltype(folders_)>();
    {
        const std::lock_guard lock(mutex_);
        std::swap(*forgotten, folders_);
        bytes_ = 0;
    }
    platform::startDetached([forgotten] {});
}

std::size_t RememberedStore::bytes() const {
    const std::lock_guard lock(mutex_);
    return bytes_;
}

std::optional<FolderListing> RememberedStore::unchanged(const std::string& directory,
                                                        const StampOf& stampOf) {
    FolderListing known;
    {
        const std::lock_guard lock(mutex_);
        const auto found = folders_.find(directory);
        if (found == folders_.end())
            return std::nullopt;
        found->second.search = search_;
        if (!found->second.settled)
            return std::nullopt;
        known = found->second.listing;
    }
    if ((stampOf ? stampOf(known) : platform::directoryStamp(directory)) != known.stamp)
        return std::nullopt;
    return known;
}

void RememberedStore::keep(const std::string& directory, const FolderListing& listing,
                           const Moment& begun) {
    const std::lock_guard lock(mutex_);
    Folder folder{listing, false, begun.steady, search_};
    if (const auto before = folders_.find(directory);
        before != folders_.end() && before->second.listing.stamp == listing.stamp)
        folder.firstSeen = before->second.firstSeen;
    const std::chrono::milliseconds seenFor(begun.steady - folder.firstSeen);
    folder.settled = isSettled(listing, begun, seenFor, rules_.trustsUnknown);
    if (!folder.settled)
        folder.listing.parts.clear();
    remove(directory);
    const std::size_t needed = footprint(directory, folder.listing);
    makeRoom(needed);
    if (bytes_ + needed > rules_.mostBytes)
        return;
    bytes_ += needed;
    folders_.emplace(directory, std::move(folder));
}

// Once a search: a store that is too large is remembered in part, not again and again in others.
void RememberedStore::makeRoom(std::size_t bytes) {
    if (bytes_ + bytes <= rules_.mostBytes || sweptIn_ == search_)
        return;
    sweptIn_ = search_;
    for (auto folder = folders_.begin(); folder != folders_.end();) {
        if (folder->second.search + 1 < search_) {
            bytes_ -= footprint(folder->first, folder->second.listing);
            folder = folders_.erase(folder);
        } else {
            ++folder;
        }
    }
}

void RememberedStore::remove(const std::string& directory) {
    const auto folder = folders_.find(directory);
    if (folder == folders_.end())
        return;
    bytes_ -= footprint(directory, folder->second.listing);
    folders_.erase(folder);
}

} // namespace ov::modDictation
