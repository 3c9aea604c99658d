// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "dictation/listing/listing_memory.h"

#include <cstddef>
#include <cstdint>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

// The folders that searches have listed, so that the next one asks of each only whether it changed.
//
// A listing is believed when the times of its folder are what they were, and it was settled
// (isSettled). When this machine's clock is set back, all is forgotten.

namespace ov::modDictation {

class RememberedStore final : public ListingMemory {
public:
    static constexpr std::size_t usualBytes = std::size_t{512} * 1024 * 1024;

    struct Rules {
        std::size_t mostBytes = usualBytes; // of listings that are kept
        // The administrator knows that file systems whose kind is not known here keep the times of
        // folders too.
        bool trustsUnknown = false;
        Moment (*clock)() = Moment::now;
    };
    RememberedStore() : RememberedStore(Rules{}) {}
    explicit RememberedStore(Rules rules) : rules_(rules) {}

    // Once in a search, when room is needed, what neither it nor the one before asked for goes;
    // what then still finds none is not kept.
    void startSearch();
    // Nothing is believed any more.
    void forget();

    std::optional<FolderListing> unchanged(const std::string& directory,
                                           const StampOf& stampOf = nullptr) override;
    Moment begin() const override { return rules_.clock(); }
    platform::DirectoryTimes timesOf(const FolderReader& folder) override {
        return times_.of(folder);
    }
    void keep(const std::string& directory, const FolderListing& listing,
              const Moment& begun) override;

    std::size_t bytes() const;

private:
    struct Folder {
        FolderListing listing;
        bool settled = false;       // may be believed while its times stay
        std::int64_t firstSeen = 0; // when it first had these times, steady milliseconds
        std::uint64_t search = 0;   // that asked for it last
    };

    bool wasClockSetBack();
    void makeRoom(std::size_t bytes);
    void remove(const std::string& directory);

    const Rules rules_;
    TimesByDevice times_;      // in one search
    mutable std::mutex mutex_; // guards what follows
    std::unordered_map<std::string, Folder> folders_;
    std::size_t bytes_ = 0;
    std::uint64_t search_ = 0;
    std::uint64_t sweptIn_ = 0;   // the search in which room was made
    std::int64_t clockAhead_ = 0; // the wall's of the steady one, nanoseconds, in the last search
};

} // namespace ov::modDictation
