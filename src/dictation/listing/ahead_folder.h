// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "dictation/listing/folder_above.h"
#include "dictation/listing/listing_memory.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <list>
#include <memory>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace ov::modDictation {

// The folders that a folder lies in, from its own one up to the root, as they were when listed.
struct FoldersAround {
    FoldersAround(std::string path, const platform::DirectoryId& id,
                  std::shared_ptr<const FoldersAround> around, HeldDirectoryPtr held,
                  FolderAbove::Clock::time_point seen)
        : folder(std::move(path), id, std::move(held), seen), next(std::move(around)) {}

    const FolderAbove folder;
    const std::shared_ptr<const FoldersAround> next;
};

bool isInside(const FoldersAround* around, const platform::DirectoryId& id) noexcept;

// A folder on its way from the threads that list it, one at a time, to the walk.
struct AheadFolder {
    AheadFolder(std::string thePath, std::int32_t theDepth,
                std::shared_ptr<const FoldersAround> theAround)
        : path(std::move(thePath)), depth(theDepth), around(std::move(theAround)) {}

    const std::string path; // a directory text
    const std::int32_t depth;
    const std::shared_ptr<const FoldersAround> around;

    // Used by the thread that lists it.
    std::unique_ptr<FolderReader> reader;
    FolderListing listing;
    ListingMemory::Moment begun;
    HeldDirectoryPtr held; // where it is to be asked for its subfolders
    FolderAbove::Clock::time_point seen;
    std::shared_ptr<const FoldersAround> inside; // of its subfolders, once one is known

    // What came of it; the walk looks once it has taken the folder to its end.
    platform::Status problem;
    bool opened = false;     // and the problem came later, if there is one
    bool isKnown = false;    // it was not listed: it is as it is remembered
    bool isCircular = false; // the walk is inside of this folder already: it was not listed

    // Guarded by the lock of the threads.
    std::deque<ListedNamesPtr> untaken;
    std::vector<std::shared_ptr<AheadFolder>> subfolders; // that are to be walked
    bool isListed = false;
    bool isInWork = false;

    // With its places in the lists that it stands in.
    std::size_t footprint() const noexcept { return sizeof *this + path.capacity() + 256; }
};

using AheadFolderPtr = std::shared_ptr<AheadFolder>;

// The folders that are known and not yet listed, in the order of the walk: depth first, a folder
// before those in it.
class Frontier {
public:
    void setRoot(const AheadFolderPtr& root);
    // Behind the subfolders that it has already, before all that comes after it.
    void addSubfolder(AheadFolder& folder, const AheadFolderPtr& subfolder);
    void remove(AheadFolder& folder);
    // The first that no thread is working on; nullptr when there is none.
    AheadFolderPtr firstIdle() const;

private:
    using Places = std::list<AheadFolderPtr>; // nullptr ends the subfolders of one
    struct Span {
        Places::iterator begin;
        Places::iterator end;
    };

    void insert(Places::iterator before, const AheadFolderPtr& folder);

    Places places_;
    std::unordered_map<const AheadFolder*, Span> spans_;
};

} // namespace ov::modDictation
