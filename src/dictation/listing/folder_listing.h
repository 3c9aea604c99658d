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

struct ListedEntry {
    bool isFolder = false; // else a dictation
    std::string_view name;
};

// Some of the entries one after the other, each as a letter for its kind, the name and a zero.
// Shared between the walk that tests them, and what remembers them.
using ListedNames = std::shared_ptr<const std::string>;

// Cuts the first entry off; false when there is none.
bool takeEntry(std::string_view& names, ListedEntry& entry) noexcept;

// A folder as it was listed from end to end.
struct FolderListing {
    platform::DirectoryStamp stamp;
    std::vector<ListedNames> parts;
    bool hasLinks = false; // among the entries: what these lead to changes without the folder

    std::size_t bytes() const noexcept;
};

// Lists a folder, part by part. Keep one and open it again and again: its buffer is reused.
class FolderReader {
public:
    platform::Status open(std::string_view directory);
    const platform::DirectoryStamp& stamp() const noexcept { return reader_.stamp(); }

    // Puts the next entries behind each other into `names`, some 64 KiB at most; none or few also
    // where there are more: `ended` tells.
    void next(std::string& names);
    bool ended() const noexcept { return ended_; }
    // Once ended: whether that was the end of the folder.
    const platform::Status& status() const noexcept { return reader_.status(); }
    bool hasLinks() const noexcept { return hasLinks_; }

private:
    void add(const platform::DirectoryEntry& entry, std::string& names);

    platform::DirectoryReader reader_;
    bool ended_ = false;
    bool hasLinks_ = false;
};

} // namespace ov::modDictation
