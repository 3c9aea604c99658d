// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "dictation/listing/folder_listing.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

// The folders that searches have listed, so that the next one asks of each only whether it changed.
//
// A listing is believed when the times of its folder are what they were, and these were old enough
// when it was listed: a change right after it could otherwise bear the same time. How old is known
// where the file system goes by this machine's clock; when that is set back, all is forgotten.
// Where a server's clock counts, the same times must have been seen twice, as long apart, and be
// finer than whole seconds, which those of file systems that know no more may not be worth
// anything. Folders with links, and file systems of which it is not known what their times are
// worth, are listed always.
//
// All functions may be called from any thread.

namespace ov::modDictation {

class RememberedStore {
public:
    static constexpr std::size_t usualBytes = std::size_t{512} * 1024 * 1024;

    // A moment by the two clocks.
    struct Moment {
        std::int64_t wall = 0;   // nanoseconds since 1970
        std::int64_t steady = 0; // milliseconds
    };
    static Moment now();

    struct Rules {
        std::size_t mostBytes = usualBytes; // of listings that are kept
        // The administrator knows that file systems whose kind is not known here keep the times of
        // folders too.
        bool trustsUnknown = false;
        Moment (*clock)() = now;
    };
    RememberedStore() : RememberedStore(Rules{}) {}
    explicit RememberedStore(Rules rules) : rules_(rules) {}

    // Once in a search, when room is needed, what neither it nor the one before asked for goes;
    // what then still finds none is not kept.
    void startSearch();
    // Nothing is believed any more.
    void forget();

    using StampOf = std::function<std::optional<platform::DirectoryStamp>(const FolderListing&)>;
    // The directory's listing if it is as it was. Asks the file system once, and by `stampOf`,
    // which gets the listing as it is remembered, when that is given.
    std::optional<FolderListing> unchanged(const std::string& directory,
                                           const StampOf& stampOf = nullptr);

    // Asked before a folder is listed.
    Moment begin() const { return rules_.clock(); }
    // For the listing of the folder that has just been opened: asks the file system once a search
    // and device.
    platform::DirectoryTimes timesOf(const FolderReader& folder);
    // Takes a listing of the directory, from end to end, that began then.
    void keep(const std::string& directory, const FolderListing& listing, const Moment& begun);

    std::size_t bytes() const;

private:
    struct Folder {
        FolderListing listing;
        bool settled = false;       // may be believed while its times stay
        std::int64_t firstSeen = 0; // when it first had these times, steady milliseconds
        std::uint64_t search = 0;   // that asked for it last
    };

    bool wasClockSetBack();
    bool isSettled(const Folder& folder, const Moment& begun) const;
    void makeRoom(std::size_t bytes);
    void remove(const std::string& directory);

    const Rules rules_;
    mutable std::mutex mutex_; // guards what follows
    std::unordered_map<std::string, Folder> folders_;
    std::map<std::uint64_t, platform::DirectoryTimes> times_; // by device
    std::size_t bytes_ = 0;
    std::uint64_t search_ = 0;
    std::uint64_t sweptIn_ = 0;   // the search in which room was made
    std::int64_t clockAhead_ = 0; // the wall's of the steady one, nanoseconds, in the last search
};

} // namespace ov::modDictation
