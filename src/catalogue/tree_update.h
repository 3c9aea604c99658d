// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "catalogue/catalogue.h"
#include "catalogue/folder_writer.h"
#include "catalogue/known_folders.h"
#include "catalogue/store_update.h"
#include "dictation/listing/listing_ahead.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace ov::catalogue {

// One update on its way through the tree; see updateStore(). A folder is written together with
// those in it, so that whoever goes on later knows them all.
class TreeUpdate {
public:
    TreeUpdate(Catalogue& catalogue, Store store, std::vector<Folder> folders,
               const UpdateMeans& means);

    UpdateReport run();

    // Places of new folders until the update comes to its end, behind all others.
    static constexpr std::int64_t firstFreePlace = std::int64_t{1} << 40;

private:
    using AheadFolder = modDictation::AheadFolder;
    using AheadFolders = std::vector<modDictation::AheadFolderPtr>;
    using Parts = FolderWriter::Parts;
    struct Entry {
        Folder folder;
        std::size_t index = 0; // in order_, if it was known
        std::int64_t newPlace = 0;
        bool isSeen = false;
        bool wasMounted = false; // into the folder above
    };

    bool isOver() const { return stop_.stop_requested() || !report_.status.ok(); }
    void check(platform::Status status);
    void keepKnown(std::vector<Folder> folders);
    std::shared_ptr<KnownFolders> knownFolders(const std::vector<Folder>& folders) const;
    Catalogue& writing();
    void walk(const modDictation::AheadFolderPtr& folder);
    void walkOnTheWay(const AheadFolder& folder, AheadFolders subfolders);
    bool takeAll(AheadFolder& folder, Parts& parts);
    void accept(AheadFolder& folder, const Parts& parts, const AheadFolders& subfolders);
    void write(Entry& entry, const AheadFolder& folder, const Parts& parts);
    void meetProblem(const AheadFolder& folder);
    bool isRootThere();
    bool isEmptyPlace(const AheadFolder& folder, const Parts& parts) const;
    void meetEmptyPlace(const AheadFolder& folder);
    Entry& entryOf(const AheadFolder& folder);
    void see(Entry& entry);
    std::vector<Entry*> knownBelow(const std::string& path);
    void keep(const AheadFolder& folder, const platform::Status& problem);
    void commitNowAndThen();
    void finish();
    void tidy();

    Catalogue& catalogue_;
    Store store_;
    const UpdateMeans& means_;
    const std::stop_token stop_;
    const ToldChanges* const changes_;
    const modDictation::ListingMemory::Moment begun_;
    std::vector<Entry*> order_;  // those that were known, by their places
    std::vector<Entry*> byPath_; // the same, once they are asked for
    std::unordered_map<std::string, Entry> entries_;
    modDictation::ListingAhead listing_;
    platform::DirectoryId rootId_;
    FolderWriter writer_;
    std::int64_t nextPlace_ = 0; // of those that are seen
    std::int64_t freePlace_ = firstFreePlace;
    std::int64_t uncommitted_ = 0;
    std::chrono::steady_clock::time_point committed_ = std::chrono::steady_clock::now();
    bool isThrough_ = false;
    UpdateReport report_;
};

// Where an update was broken off nobody knows in which order the new folders lie: those that they
// are in are listed again.
void relistUnfinished(std::vector<Folder>& folders);

} // namespace ov::catalogue
