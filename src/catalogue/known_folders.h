// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "catalogue/catalogue.h"
#include "dictation/listing/listing_memory.h"

#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace ov::catalogue {

// Those that are to be looked at when something tells which have changed: these, those with links,
// whose ends change without them, and all in them, which may be others of the same name.
class AskedFolders {
public:
    AskedFolders(std::unordered_set<std::string> told, const std::vector<Folder>& known,
                 std::string_view root);

    bool has(const std::string& directory) const;
    // Or is on the way to one.
    bool leadsTo(const std::string& directory) const {
        return has(directory) || onTheWay_.contains(directory);
    }

private:
    std::unordered_set<std::string> asked_;
    std::unordered_set<std::string> onTheWay_;
};

// The folders that a catalogue has of a store, for those that list it: of one that is as it was
// only the subfolders are told, as its dictations are in the catalogue already.
class KnownFolders final : public modDictation::ListingMemory {
public:
    struct Rules {
        // Nanoseconds since 1970. Nothing is believed that was listed later: the clock was set
        // back.
        std::int64_t now = 0;
        bool trustsFolderTimes = false; // see Settled
        // The others are believed to be as they were, and told of only where they lead to these;
        // nullptr: all are asked. Shared, as threads that list may ask after the update's end.
        std::shared_ptr<const AskedFolders> asked;
        Moment (*clock)() = Moment::now;
    };
    // By their places.
    KnownFolders(const std::vector<Folder>& folders, Rules rules);

    std::optional<modDictation::FolderListing> unchanged(const std::string& directory,
                                                         const StampOf& stampOf) override;
    Moment begin() const override { return rules_.clock(); }
    platform::DirectoryTimes timesOf(const modDictation::FolderReader& folder) override {
        return times_.of(folder);
    }
    // The update itself does, where it writes the names.
    void keep(const std::string& /*directory*/, const modDictation::FolderListing& /*listing*/,
              const Moment& /*begun*/) override {}

private:
    struct Known {
        modDictation::FolderListing listing;
        bool isSettled = false;
    };
    bool isSettled(const Folder& folder) const;
    bool isAsked(const std::string& directory) const;
    bool isReplaced(const std::string& directory) const;

    const Rules rules_;
    mutable std::mutex mutex_;          // guards what follows
    std::vector<std::string> replaced_; // other folders of the same name: all below is asked
    std::unordered_map<std::string, Known> folders_; // that may be believed
    modDictation::TimesByDevice times_;
};

// "\a\b\" of "\a\b\c\".
std::string_view directoryAbove(std::string_view directory) noexcept;

} // namespace ov::catalogue
