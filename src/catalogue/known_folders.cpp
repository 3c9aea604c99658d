// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "catalogue/known_folders.h"

#include <algorithm>
#include <memory>
#include <utility>

namespace ov::catalogue {

using modDictation::FolderListing;
using modDictation::ListedNames;

std::string_view directoryAbove(std::string_view directory) noexcept {
    if (directory.size() < 2)
        return {};
    return directory.substr(0, directory.rfind('\\', directory.size() - 2) + 1);
}

AskedFolders::AskedFolders(std::unordered_set<std::string> told, const std::vector<Folder>& known,
                           std::string_view root)
    : asked_(std::move(told)) {
    for (const Folder& folder : known)
        if (folder.settled == Settled::linked)
            asked_.insert(folder.path);
    for (const std::string& folder : asked_)
        for (std::string_view above = directoryAbove(folder);
             above.size() >= root.size() && onTheWay_.emplace(above).second;
             above = directoryAbove(above))
            ;
}

bool AskedFolders::has(const std::string& directory) const {
    return asked_.contains(directory) || asked_.contains(std::string(directoryAbove(directory)));
}

KnownFolders::KnownFolders(const std::vector<Folder>& folders, Rules rules)
    : rules_(std::move(rules)) {
    std::unordered_map<std::string_view, std::shared_ptr<ListedNames>> subfolders;
    for (const Folder& folder : folders) {
        if (rules_.asked != nullptr && !rules_.asked->leadsTo(folder.path))
            continue;
        const std::string_view path = folder.path;
        const std::string_view above = directoryAbove(path);
        auto& names = subfolders[above];
        if (names == nullptr)
            names = std::make_shared<ListedNames>();
        modDictation::appendName(path.substr(above.size(), path.size() - above.size() - 1),
                                 names->folders);
    }
    for (const Folder& folder : folders) {
        if (rules_.asked == nullptr && !isSettled(folder))
            continue;
        folders_[folder.path].isSettled = isSettled(folder);
        FolderListing& listing = folders_[folder.path].listing;
        listing.stamp = folder.stamp;
        if (const auto names = subfolders.find(folder.path); names != subfolders.end())
            listing.parts.push_back(names->second);
    }
}

bool KnownFolders::isSettled(const Folder& folder) const {
    const bool isSettled = folder.settled == Settled::yes ||
                           (folder.settled == Settled::byTrust && rules_.trustsFolderTimes);
    return isSettled && folder.firstSeen <= rules_.now;
}

std::optional<FolderListing> KnownFolders::unchanged(const std::string& directory,
                                                     const StampOf& stampOf) {
    const auto known = folders_.find(directory);
    if (known == folders_.end())
        return std::nullopt;
    const FolderListing& listing = known->second.listing;
    if (!isAsked(directory))
        return listing;
    const auto stamp = stampOf(listing);
    if (rules_.asked != nullptr && stamp && stamp->id != listing.stamp.id) {
        const std::lock_guard lock(mutex_);
        replaced_.push_back(directory);
    }
    return known->second.isSettled && stamp == listing.stamp ? std::optional(listing)
                                                             : std::nullopt;
}

bool KnownFolders::isAsked(const std::string& directory) const {
    return rules_.asked == nullptr || rules_.asked->has(directory) || isReplaced(directory);
}

bool KnownFolders::isReplaced(const std::string& directory) const {
    const std::lock_guard lock(mutex_);
    return std::ranges::any_of(
        replaced_, [&](const std::string& above) { return directory.starts_with(above); });
}

} // namespace ov::catalogue
