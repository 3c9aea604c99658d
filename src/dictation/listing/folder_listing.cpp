// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "dictation/listing/folder_listing.h"

#include "dictation/dictation_record.h"

#include <numeric>

namespace ov::modDictation {

namespace {

constexpr char folderMark = 'f';
constexpr char dictationMark = 'd';

constexpr std::size_t partBytes = std::size_t{64} * 1024;
// Of a folder that holds other things, so that a walk that has gone is noticed.
constexpr int mostEntriesOfPart = 20'000;

// The host keeps what is not to be searched in folders whose names begin so.
constexpr char hiddenFolderMark = '_';

} // namespace

bool takeEntry(std::string_view& names, ListedEntry& entry) noexcept {
    if (names.empty())
        return false;
    entry.isFolder = names.front() == folderMark;
    entry.name = names.data() + 1; // up to its zero
    names.remove_prefix(entry.name.size() + 2);
    return true;
}

std::size_t FolderListing::bytes() const noexcept {
    return std::accumulate(
        parts.begin(), parts.end(), sizeof *this,
        [](std::size_t sum, const ListedNames& names) { return sum + names->capacity(); });
}

platform::Status FolderReader::open(std::string_view directory) {
    ended_ = false;
    hasLinks_ = false;
    return reader_.open(directory);
}

void FolderReader::next(std::string& names) {
    platform::DirectoryEntry entry;
    names.clear();
    for (int i = 0; i < mostEntriesOfPart && names.size() < partBytes && !ended_; ++i) {
        ended_ = !reader_.next(entry);
        if (!ended_)
            add(entry, names);
    }
}

void FolderReader::add(const platform::DirectoryEntry& entry, std::string& names) {
    const bool mayBeDictation = hasDictationEnding(entry.name);
    hasLinks_ = hasLinks_ || entry.isLink;
    const bool isDictation = mayBeDictation && entry.kind == platform::FileKind::file;
    const bool isFolder =
        entry.kind == platform::FileKind::directory && !entry.name.starts_with(hiddenFolderMark);
    if (isDictation || isFolder)
        names.append(1, isFolder ? folderMark : dictationMark).append(entry.name).push_back('\0');
}

} // namespace ov::modDictation
