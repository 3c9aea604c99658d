// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "catalogue/folder_writer.h"

#include "catalogue/arranged_names.h"
#include "dictation/dictation_record.h"

#include <chrono>
#include <functional>
#include <string_view>
#include <utility>

namespace ov::catalogue {

using modDictation::AheadFolder;
using modDictation::ListedName;
using modDictation::ListedNamesPtr;
using platform::Status;

namespace {

std::uint64_t digestOf(const FolderWriter::Parts& parts) {
    constexpr std::uint64_t spread = 0x9E3779B97F4A7C15U;
    std::uint64_t digest = 0;
    for (const ListedNamesPtr& names : parts)
        digest = digest * spread + std::hash<std::string_view>()(names->dictations);
    return digest;
}

std::int64_t countSkipped(std::string_view names) {
    std::int64_t count = 0;
    for (ListedName name; modDictation::takeName(names, name);)
        count += name.hasBackslash ? 1 : 0;
    return count;
}

} // namespace

FolderWriter::FolderWriter(Catalogue& catalogue, bool trustsFolderTimes)
    : catalogue_(catalogue),
      trustsFolderTimes_(trustsFolderTimes),
      values_([this](std::int32_t field, std::string_view upper, std::string_view text) {
          return catalogue_.numberOfText(ward_, field, upper, text);
      }) {}

Settled FolderWriter::settledAs(const AheadFolder& listed, std::int64_t seenFor) const {
    const auto isSettled = [&](bool trustsUnknown) {
        return modDictation::isSettled(listed.listing, listed.begun,
                                       std::chrono::nanoseconds(seenFor), trustsUnknown);
    };
    if (listed.isCircular)
        return Settled::no;
    if (listed.listing.hasLinks)
        return Settled::linked;
    if (isSettled(false))
        return Settled::yes;
    return trustsFolderTimes_ && isSettled(true) ? Settled::byTrust : Settled::no;
}

bool FolderWriter::take(Folder& folder, const AheadFolder& listed, const Parts& parts,
                        std::int64_t now) const {
    const bool isNew = folder.firstSeen == 0;
    const bool isSeenLonger =
        !isNew && folder.stamp == listed.listing.stamp && folder.firstSeen <= now;
    folder.problem.clear();
    folder.stamp = listed.listing.stamp;
    folder.firstSeen = isSeenLonger ? folder.firstSeen : listed.begun.wall;
    folder.settled = settledAs(listed, now - folder.firstSeen);
    folder.skipped = 0;
    for (const ListedNamesPtr& names : parts)
        folder.skipped += countSkipped(names->dictations) + countSkipped(names->folders);
    const std::uint64_t before = std::exchange(folder.digest, digestOf(parts));
    return isNew || folder.digest != before;
}

Status FolderWriter::writeNames(Folder& folder, const Parts& parts) {
    std::vector<ListedName> files;
    std::vector<std::string_view> names;
    for (const ListedNamesPtr& part : parts) {
        std::string_view rest = part->dictations;
        for (ListedName file; modDictation::takeName(rest, file);)
            if (!file.hasBackslash) {
                files.push_back(file);
                names.push_back(file.name);
            }
    }
    KeptNames kept;
    if (folder.dictations > 0)
        for (Status read : {catalogue_.names(folder.id, kept.names),
                            catalogue_.positions(folder.id, kept.positions)})
            if (!read.ok())
                return read;
    const ArrangedNames arranged(names, kept);
    if (!arranged.removed.empty())
        if (Status removed = catalogue_.removeDictations(folder.id, arranged.removed);
            !removed.ok())
            return removed;
    folder.dictations = static_cast<std::int64_t>(files.size());
    if (std::exchange(ward_, folder.ward) != folder.ward)
        values_.forget();
    for (std::size_t i = 0; i < files.size(); ++i)
        if (arranged.isNew[i])
            if (Status added = add(folder, arranged.positions[i], files[i]); !added.ok())
                return added;
    return {};
}

Status FolderWriter::add(const Folder& folder, std::int64_t position, const ListedName& file) {
    const std::string_view name = file.isUtf8 ? modDictation::withoutEnding(file.name)
                                              : modDictation::dictationName(file.name, nameBuffer_);
    return catalogue_.addDictation(folder.id, position, file.name, values_.read(name));
}

} // namespace ov::catalogue
