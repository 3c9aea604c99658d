// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "catalogue/catalogue.h"
#include "dictation/listing/listing_memory.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <stop_token>
#include <string>
#include <unordered_set>
#include <vector>

namespace ov::catalogue {

struct UpdateReport {
    platform::Status status;  // why it ended early; what it had committed by then stays
    bool stopped = false;     // by a request
    bool isWhole = true;      // not only of what is told to have changed
    std::int64_t folders = 0; // met
    std::int64_t listed = 0;  // of them, the others were as before
    std::int64_t written = 0; // dictations, those of folders whose names are others now
    std::int64_t removed = 0; // folders that have gone
    std::vector<platform::Status> problems; // the first folders that could not be read
    std::int64_t unreadable = 0;
    platform::Status untidy; // what could not be tidied up after the last commit
};

// Where something tells which folders have changed.
struct ToldChanges {
    std::unordered_set<std::string> folders; // directories, also such as are not in the store
    // Nothing had changed in the others until then, nanoseconds since 1970; nothing: perhaps it
    // has.
    std::optional<std::int64_t> allUntil;
};

struct UpdateMeans {
    std::stop_token stop = {};
    std::function<void(const UpdateReport&)> watch = {}; // for each folder, and while it waits
    // Told of each folder that is looked at, and can be: the directory.
    std::function<void(const std::string& directory)> entered = {};
    // Only these are looked at, and what is new in them; but all are where the update before was
    // broken off or never was. nullptr: all are.
    const ToldChanges* changes = nullptr;
    bool trustsFolderTimes = false; // see isSettled() of listings
    modDictation::ListingMemory::Moment (*clock)() = modDictation::ListingMemory::Moment::now;
    std::int64_t batch = 50'000; // dictations that are committed at once, and a second's at most
};

// Brings what the catalogue has of the store at `root` (a directory text) up to date, or adds it.
// Lists the folders that have changed since, as a walk would, and forgets those that have gone. One
// that cannot be read keeps what was known of it, with the reason; a store that cannot be read, or
// that has become an empty folder, as when nothing is mounted there, is left as it was.
// What was mounted below the root and is an empty folder now counts as one that cannot be read.
//
// Each commit leaves a catalogue that answers, and that a later update takes up, whatever became of
// this one. `begun` of the store is set until the update comes to its end, `asOf` when nothing in
// the store can have changed unseen since it began. A store that lies in another one of the
// catalogue, or the other way round, is refused: either would hide the other.
UpdateReport updateStore(Catalogue& catalogue, const std::string& root, const UpdateMeans& means);

} // namespace ov::catalogue
