// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "catalogue/tree_update.h"

#include <algorithm>
#include <memory>
#include <string_view>
#include <unordered_set>
#include <utility>

namespace ov::catalogue {

using modDictation::ListedNamesPtr;
using modDictation::ListingAhead;
using platform::Status;

namespace {

std::shared_ptr<const AskedFolders>
askedIn(const ToldChanges* changes, const std::vector<Folder>& folders, const std::string& root) {
    if (changes == nullptr)
        return nullptr;
    return std::make_shared<const AskedFolders>(changes->folders, folders, root);
}

} // namespace

void relistUnfinished(std::vector<Folder>& folders) {
    std::unordered_set<std::string_view> around;
    for (const Folder& folder : folders)
        if (folder.place >= TreeUpdate::firstFreePlace)
            around.insert(directoryAbove(folder.path));
    for (Folder& folder : folders)
        if (around.contains(folder.path))
            folder.settled = Settled::no;
}

TreeUpdate::TreeUpdate(Catalogue& catalogue, Store store, std::vector<Folder> folders,
                       const UpdateMeans& means)
    : catalogue_(catalogue),
      store_(std::move(store)),
      means_(means),
      stop_(means.stop),
      changes_(store_.asOf != 0 && store_.begun == 0 ? means.changes : nullptr),
      begun_(means.clock()),
      listing_({store_.root, -1, ListingAhead::usualBytes, knownFolders(folders)}),
      writer_(catalogue, means.trustsFolderTimes) {
    if (const auto stamp = platform::directoryStamp(store_.root))
        rootId_ = stamp->id;
    keepKnown(std::move(folders));
}

std::shared_ptr<KnownFolders> TreeUpdate::knownFolders(const std::vector<Folder>& folders) const {
    return std::make_shared<KnownFolders>(
        folders, KnownFolders::Rules{begun_.wall, means_.trustsFolderTimes,
                                     askedIn(changes_, folders, store_.root), means_.clock});
}

void TreeUpdate::keepKnown(std::vector<Folder> folders) {
    for (Folder& folder : folders) {
        freePlace_ = std::max(freePlace_, folder.place + 1);
        Entry& entry = entries_[folder.path];
        entry.folder = std::move(folder);
        entry.index = order_.size();
        order_.push_back(&entry);
    }
    for (Entry* entry : order_) {
        const auto above = entries_.find(std::string(directoryAbove(entry->folder.path)));
        entry->wasMounted = above != entries_.end() && entry->folder.firstSeen > 0 &&
                            above->second.folder.firstSeen > 0 &&
                            above->second.folder.stamp.id.device != entry->folder.stamp.id.device;
    }
}

UpdateReport TreeUpdate::run() {
    const Stoppable stoppable(catalogue_, [this] {
        if (means_.watch)
            means_.watch(report_);
        return stop_.stop_requested();
    });
    report_.isWhole = changes_ == nullptr;
    walk(listing_.root());
    if (!isOver())
        isRootThere();
    if (!isOver())
        finish();
    else if (report_.status.ok())
        check(catalogue_.commit());
    else
        catalogue_.rollBack();
    report_.stopped = stop_.stop_requested() && !isThrough_;
    return std::move(report_);
}

void TreeUpdate::check(Status status) {
    if (report_.status.ok() && !Catalogue::isStopped(status))
        report_.status = std::move(status);
}

// From the first change on others know that this update has begun.
Catalogue& TreeUpdate::writing() {
    if (std::exchange(store_.begun, begun_.wall) != begun_.wall)
        check(catalogue_.putStore(store_));
    return catalogue_;
}

void TreeUpdate::walk(const modDictation::AheadFolderPtr& folder) {
    listing_.enter(folder);
    Parts parts;
    if (!takeAll(*folder, parts))
        return;
    if (!folder->problem.ok())
        return meetProblem(*folder);
    AheadFolders subfolders = listing_.takeSubfolders(*folder);
    if (isEmptyPlace(*folder, parts))
        return meetEmptyPlace(*folder);
    if (means_.entered)
        means_.entered(folder->path);
    accept(*folder, parts, subfolders);
    parts.clear();
    if (means_.watch)
        means_.watch(report_);
    if (folder->isKnown && changes_ != nullptr)
        return walkOnTheWay(*folder, std::move(subfolders));
    for (auto& subfolder : subfolders) {
        if (isOver())
            return;
        walk(std::exchange(subfolder, nullptr)); // its memory goes with it
    }
}

// Of a folder that is as it was, those among its subfolders that lead to what is asked about; the
// others stay, with all that is below them.
void TreeUpdate::walkOnTheWay(const AheadFolder& folder, AheadFolders subfolders) {
    const auto isBelow = [this](std::size_t index, const std::string& path) {
        return index < order_.size() && order_[index]->folder.path.starts_with(path);
    };
    std::size_t next = entries_[folder.path].index + 1;
    for (auto& subfolder : subfolders) {
        const std::string path = subfolder->path;
        for (; isBelow(next, folder.path) && order_[next]->folder.path != path; ++next)
            see(*order_[next]);
        if (isOver())
            return;
        walk(std::exchange(subfolder, nullptr));
        while (isBelow(next, path))
            ++next;
    }
    for (; isBelow(next, folder.path); ++next)
        see(*order_[next]);
}

// False when it was stopped.
bool TreeUpdate::takeAll(AheadFolder& folder, Parts& parts) {
    ListedNamesPtr names;
    while (!isOver())
        switch (listing_.take(folder, names)) {
        case ListingAhead::Taken::names:
            parts.push_back(names);
            break;
        case ListingAhead::Taken::nothingYet:
            if (means_.watch)
                means_.watch(report_);
            break;
        case ListingAhead::Taken::end:
            return true;
        }
    return false;
}

TreeUpdate::Entry& TreeUpdate::entryOf(const AheadFolder& folder) {
    Entry& entry = entries_[folder.path];
    if (entry.folder.id != 0)
        return entry;
    entry.folder.path = folder.path;
    entry.folder.depth = folder.depth;
    entry.folder.place = freePlace_++;
    check(writing().putFolder(store_.id, entry.folder));
    ++uncommitted_;
    return entry;
}

void TreeUpdate::see(Entry& entry) {
    entry.isSeen = true;
    entry.newPlace = nextPlace_++;
    ++report_.folders;
}

void TreeUpdate::accept(AheadFolder& folder, const Parts& parts, const AheadFolders& subfolders) {
    Entry& entry = entryOf(folder);
    see(entry);
    if (folder.isKnown && !folder.isCircular)
        return;
    for (const auto& subfolder : subfolders)
        entryOf(*subfolder);
    write(entry, folder, parts);
    commitNowAndThen();
}

void TreeUpdate::write(Entry& entry, const AheadFolder& folder, const Parts& parts) {
    ++report_.listed;
    if (writer_.take(entry.folder, folder, parts, begun_.wall)) {
        writing();
        if (report_.status.ok())
            check(writer_.writeNames(entry.folder, parts));
        report_.written += entry.folder.dictations;
        uncommitted_ += entry.folder.dictations;
    }
    check(writing().putFolder(store_.id, entry.folder));
    ++uncommitted_;
}

void TreeUpdate::commitNowAndThen() {
    if (isOver())
        return;
    constexpr std::chrono::seconds longest{1};
    const auto now = std::chrono::steady_clock::now();
    if (uncommitted_ < means_.batch && (uncommitted_ == 0 || now < committed_ + longest))
        return;
    check(catalogue_.commit());
    uncommitted_ = 0;
    committed_ = now;
}

void TreeUpdate::finish() {
    std::vector<Folder> moved;
    for (auto& [path, entry] : entries_) {
        if (!entry.isSeen) {
            check(writing().removeFolder(entry.folder.id));
            ++report_.removed;
        } else if (entry.folder.place != entry.newPlace) {
            moved.push_back(entry.folder);
            moved.back().place = entry.newPlace;
        }
    }
    if (!moved.empty())
        check(writing().setPlaces(moved));
    store_.begun = 0;
    store_.asOf = changes_ == nullptr ? begun_.wall : changes_->allUntil.value_or(store_.asOf);
    check(catalogue_.putStore(store_));
    if (isOver())
        return catalogue_.rollBack();
    check(catalogue_.commit());
    if (report_.status.ok())
        tidy();
}

void TreeUpdate::tidy() {
    report_.untidy = catalogue_.tidy(changes_ != nullptr);
    isThrough_ = !Catalogue::isStopped(report_.untidy);
    if (!isThrough_)
        report_.untidy = {};
}

} // namespace ov::catalogue
