// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "dictation/listing/ahead_folder.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

// Threads that list the folders of a tree ahead of the walk that looks into them. The walk asks in
// its own order, gets each folder's names in the order of the file system, and never touches the
// file system itself (but where no thread can be had): so it can be stopped also while a server is
// silent.
//
// There are as many threads as pay: one a processor where listing is work, up to 64 where it is
// waiting. They list what the walk comes to next.

namespace ov::modDictation {

class ListingAhead {
public:
    static constexpr std::size_t usualBytes = std::size_t{64} * 1024 * 1024;

    struct Tree {
        std::string root;                          // a directory text
        std::int32_t depth = -1;                   // of the deepest folders to list, -1 for all
        std::size_t bytes = usualBytes;            // of names that the walk has not got to yet
        std::shared_ptr<ListingMemory> remembered; // or nullptr
    };
    explicit ListingAhead(Tree tree);
    // Waits for nobody: threads that are inside a call end after it.
    ~ListingAhead();
    ListingAhead(const ListingAhead&) = delete;
    ListingAhead& operator=(const ListingAhead&) = delete;

    const AheadFolderPtr& root() const noexcept { return root_; }

    // The walk comes to this folder: nothing is more urgent now.
    void enter(const AheadFolderPtr& folder);

    enum class Taken : std::uint8_t { names, nothingYet, end };
    // The next names of the entered folder, in place of those in `names`. Waits for them, but for
    // five milliseconds at most.
    Taken take(AheadFolder& folder, ListedNamesPtr& names);

    // Those that are to be walked, in order; none is left in the folder.
    std::vector<AheadFolderPtr> takeSubfolders(AheadFolder& folder);

private:
    struct State;

    std::shared_ptr<State> state_;
    AheadFolderPtr root_;
};

} // namespace ov::modDictation
