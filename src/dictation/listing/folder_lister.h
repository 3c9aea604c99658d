// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "dictation/listing/ahead_folder.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace ov::modDictation {

// What one turn of a thread brought.
struct ListedStep {
    std::vector<ListedNamesPtr> names;
    std::vector<AheadFolderPtr> subfolders; // that are to be walked
    bool isLast = false;
};

// What lists folders on one thread, and what it uses again and again: to a process, memory that is
// new costs more than what is written into it.
class FolderLister {
public:
    // Subfolders of folders at `depth` (-1: none) are not to be walked. `remembered` may be
    // nullptr.
    FolderLister(std::int32_t depth, std::shared_ptr<ListingMemory> remembered)
        : depth_(depth), remembered_(std::move(remembered)) {}

    // The next names of the folder, which no other thread uses meanwhile. Does not throw: what goes
    // wrong is the folder's problem, and its end.
    ListedStep next(AheadFolder& folder);

    // To give names to the walk in, when it has none.
    bool needsSpare() const noexcept { return !remembered_ && !spare_; }
    void setSpare(std::shared_ptr<ListedNames> spare) { spare_ = std::move(spare); }

private:
    ListedStep list(AheadFolder& folder);
    bool open(AheadFolder& folder, ListedStep& step);
    bool recall(AheadFolder& folder);
    std::optional<platform::DirectoryStamp> stampOf(AheadFolder& folder,
                                                    const FolderListing& known) const;
    bool asksThoseIn(const AheadFolder& folder) const noexcept {
        return depth_ < 0 || folder.depth < depth_;
    }
    void finish(AheadFolder& folder);
    void add(AheadFolder& folder, const ListedNamesPtr& names, ListedStep& step) const;

    const std::int32_t depth_;
    const std::shared_ptr<ListingMemory> remembered_;
    std::unique_ptr<FolderReader> reader_;
    ListedNames names_;
    std::shared_ptr<ListedNames> spare_;
};

} // namespace ov::modDictation
