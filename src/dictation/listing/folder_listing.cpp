// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "dictation/listing/folder_listing.h"

#include "dictation/dictation_record.h"
#include "platform/text.h"

#include <numeric>

namespace ov::modDictation {

namespace {

// Bits of the mark.
constexpr char utf8Bit = 1;
constexpr char backslashBit = 2;

constexpr std::size_t partBytes = std::size_t{64} * 1024;
// Of a folder that holds other things, so that a walk that has gone is noticed.
constexpr int mostEntriesOfPart = 20'000;

// The host keeps what is not to be searched in folders whose names begin so.
constexpr char hiddenFolderMark = '_';

} // namespace

// No file system has names of more bytes than two can count.
void appendName(std::string_view name, std::string& names) {
    const bool hasBackslash = name.find('\\') != std::string_view::npos;
    names.push_back(static_cast<char>((platform::isValidUtf8(name) ? utf8Bit : 0) |
                                      (hasBackslash ? backslashBit : 0)));
    names.push_back(static_cast<char>(name.size() & 0xFFU));
    names.push_back(static_cast<char>(name.size() >> 8U));
    names.append(name);
}

bool takeName(std::string_view& names, ListedName& first) noexcept {
    if (names.empty())
        return false;
    const auto byte = [&names](std::size_t i) { return static_cast<unsigned char>(names[i]); };
    const std::size_t length = byte(1) | std::size_t{byte(2)} << 8U;
    first = {names.substr(3, length), (names[0] & utf8Bit) != 0, (names[0] & backslashBit) != 0};
    names.remove_prefix(3 + length);
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
        appendName(entry.name, names.dictations);
    if (entry.kind == platform::FileKind::directory && !entry.name.starts_with(hiddenFolderMark))
        appendName(entry.name, names.folders);
}

} // namespace ov::modDictation
