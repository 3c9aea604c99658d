// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/directories.h"

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

// What a folder holds that a search looks at: its dictations and the folders that are searched, in
// the order of the file system, with the bytes of their names.

namespace ov::modDictation {

// Some of the names, of dictations and of folders; each behind a mark and its length.
// Those of folders are few, and asked for by the threads, those of dictations by the walk.
struct ListedNames {
    std::string dictations;
    std::string folders;

    bool empty() const noexcept { return dictations.empty() && folders.empty(); }
    std::size_t bytes() const noexcept { return dictations.capacity() + folders.capacity(); }
};

// Shared between the walk that tests them, and what remembers them.
using ListedNamesPtr = std::shared_ptr<const ListedNames>;

struct ListedName {
    std::string_view name; // as the file system has it
    bool isUtf8 = true;
    bool hasBackslash = false; // no path can name it
};

// Adds a name behind those that are there.
void appendName(std::string_view name, std::string& names);

// Cuts the first name off; false when there is none.
bool takeName(std::string_view& names, ListedName& first) noexcept;

// A folder as it was listed from end to end.
struct FolderListing {
    platform::DirectoryStamp stamp;
    std::vector<ListedNamesPtr> parts;
    bool hasLinks = false; // among the entries: what these lead to changes without the folder
    platform::DirectoryTimes times = platform::DirectoryTimes::unknown; // worth of the stamp's

    std::size_t bytes() const noexcept;
};

// Lists a folder, part by part. Keep one and open it again and again: its buffer is reused.
class FolderReader {
public:
    platform::Status open(std::string_view directory);
    const platform::DirectoryStamp& stamp() const noexcept { return reader_.stamp(); }
    // Asks the file system; while some names are not yet read.
    platform::DirectoryTimes times() const { return reader_.times(); }

    // Puts the next names into `names`, some 64 KiB at most; none or few also
    // where there are more: `ended` tells.
    void next(ListedNames& names);
    bool ended() const noexcept { return ended_; }
    // Once ended: whether that was the end of the folder.
    const platform::Status& status() const noexcept { return reader_.status(); }
    bool hasLinks() const noexcept { return hasLinks_; }

private:
    void add(const platform::DirectoryEntry& entry, ListedNames& names);

    platform::DirectoryReader reader_;
    bool ended_ = false;
    bool hasLinks_ = false;
};

} // namespace ov::modDictation
