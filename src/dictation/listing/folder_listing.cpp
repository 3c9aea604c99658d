// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "dictation/listing/folder_listing.h"

#include "dictation/dictation_record.h"
#include "platform/text.h"

#include <numeric>

namespace ov::modDictation {

namespace {

constexpr char utf8Mark = 'u';
constexpr char otherMark = 'o';

constexpr std::size_t partBytes = std::size_t{64} * 1024;
// Of a folder that holds other things, so that a walk that has gone is noticed.
constexpr int mostEntriesOfPart = 20'000;

// The host keeps what is not to be searched in folders whose names begin so.
constexpr char hiddenFolderMark = '_';

void append(std::string_view name, std::string& names) {
    names.append(1, platform::isValidUtf8(name) ? utf8Mark : otherMark).append(name).push_back(0);
}

} // namespace

bool takeName(std::string_view& names, ListedName& first) noexcept {
    if (names.empty())
        return false;
    first = {names.data() + 1, names.front() == utf8Mark}; // up to its zero
    names.remove_prefix(first.name.size() + 2);
    return true;
}

std::size_t FolderListing::bytes() const noexcept {
    return std::accumulate(parts.begin(), parts.end(), sizeof *this,
                           [](std::size_t sum, const ListedNamesPtr& names) {
                               return sum + sizeof *names + names->bytes();
                           });
}

platform::Status FolderReader::open(std::string_view directory) {
    ended_ = false;
    hasLinks_ = false;
    return reader_.open(directory);
}

void FolderReader::next(ListedNames& names) {
    platform::DirectoryEntry entry;
    names.dictations.clear();
    names.folders.clear();
    for (int i = 0; i < mostEntriesOfPart && !ended_ &&
                    names.dictations.size() + names.folders.size() < partBytes;
         ++i) {
        ended_ = !reader_.next(entry);
        if (!ended_)
            add(entry, names);
    }
}

void FolderReader::add(const platform::DirectoryEntry& entry, ListedNames& names) {
    hasLinks_ = hasLinks_ || entry.isLink;
    if (entry.kind == platform::FileKind::file && hasDictationEnding(entry.name))
        append(entry.name, names.dictations);
    if (entry.kind == platform::FileKind::directory && !entry.name.starts_with(hiddenFolderMark))
        append(entry.name, names.folders);
}

} // namespace ov::modDictation
