// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "catalogue/tree_update.h"
#include "platform/files.h"

#include <algorithm>
#include <cerrno>

// What an update makes of folders that cannot be read, or should not be believed.

namespace ov::catalogue {

using platform::Status;

// Whether it is still the store that the update began with; else nothing more is believed.
bool TreeUpdate::isRootThere() {
    const auto stamp = platform::directoryStamp(store_.root);
    if (stamp && stamp->id == rootId_)
        return true;
    check({ENOENT, platform::toNativePath(store_.root),
           "unmounted or moved during the update; the rest was left as it is"});
    return false;
}

// What has gone while all around it stayed is no problem; it is forgotten in the end.
void TreeUpdate::meetProblem(const AheadFolder& folder) {
    if (!isRootThere())
        return;
    if (folder.depth == 0)
        return check(folder.problem);
    const bool isMissing = folder.problem.kind() == Status::Kind::missing;
    const auto above = platform::directoryStamp(directoryAbove(folder.path));
    if (isMissing && above && above->id == folder.around->folder.id())
        return;
    keep(folder, folder.problem);
}

// By their places, which are not those of their paths where an update was broken off.
std::vector<TreeUpdate::Entry*> TreeUpdate::knownBelow(const std::string& path) {
    const auto pathOf = [](const Entry* entry) -> const std::string& { return entry->folder.path; };
    if (byPath_.empty()) {
        byPath_ = order_;
        std::ranges::sort(byPath_, {}, pathOf);
    }
    const auto first = std::ranges::upper_bound(byPath_, path, {}, pathOf);
    const auto last = std::find_if_not(
        first, byPath_.end(), [&](const Entry* entry) { return pathOf(entry).starts_with(path); });
    std::vector<Entry*> below(first, last);
    std::ranges::sort(below, {}, &Entry::index);
    return below;
}

// What is known of it and all below.
void TreeUpdate::keep(const AheadFolder& folder, const Status& problem) {
    constexpr std::size_t mostProblems = 100;
    ++report_.unreadable;
    if (report_.problems.size() < mostProblems)
        report_.problems.push_back(problem);
    Entry& entry = entryOf(folder);
    see(entry);
    entry.folder.problem = problem.text();
    entry.folder.settled = Settled::no;
    check(writing().putFolder(store_.id, entry.folder));
    for (Entry* known : knownBelow(folder.path))
        see(*known);
    commitNowAndThen();
}

// Nothing is there and it is another folder: what was mounted there is not.
bool TreeUpdate::isEmptyPlace(const AheadFolder& folder, const Parts& parts) const {
    const auto known = entries_.find(folder.path);
    if (!parts.empty() || folder.isKnown || folder.isCircular || known == entries_.end())
        return false;
    const Entry& before = known->second;
    const platform::DirectoryId& id = folder.listing.stamp.id;
    const bool isOther = folder.depth == 0
                             ? before.folder.stamp.id != id
                             : before.wasMounted && folder.around->folder.id().device == id.device;
    const bool hadSome = before.folder.dictations > 0 ||
                         (before.index + 1 < order_.size() &&
                          order_[before.index + 1]->folder.path.starts_with(folder.path));
    return isOther && hadSome && before.folder.firstSeen > 0;
}

void TreeUpdate::meetEmptyPlace(const AheadFolder& folder) {
    constexpr const char* why = "is empty and another folder than at the last update, so perhaps "
                                "nothing is mounted there; ";
    const std::string native = platform::toNativePath(folder.path);
    if (folder.depth == 0)
        check({ENOTCONN, native, std::string(why) + "the catalogue was left as it is"});
    else
        keep(folder,
             {ENOTCONN, native, std::string(why) + "when it is removed the catalogue forgets it"});
}

} // namespace ov::catalogue
