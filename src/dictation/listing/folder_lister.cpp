// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "dictation/listing/folder_lister.h"

#include "platform/files.h"

#include <algorithm>
#include <cerrno>
#include <exception>
#include <string_view>
#include <utility>

namespace ov::modDictation {

// Nothing may leave the thread.
ListedStep FolderLister::next(AheadFolder& folder) {
    try {
        return list(folder);
    } catch (const std::exception& error) {
        folder.problem = {ENOMEM, platform::toNativePath(folder.path), error.what()};
        return {{}, {}, true};
    }
}

ListedStep FolderLister::list(AheadFolder& folder) {
    ListedStep step;
    if (!folder.reader && !open(folder, step)) {
        step.isLast = true;
        return step;
    }
    folder.reader->next(names_);
    if (!names_.empty()) {
        auto names = spare_ ? std::move(spare_) : std::make_shared<ListedNames>();
        *names = names_;
        add(folder, names, step);
    }
    if (remembered_)
        folder.listing.parts.insert(folder.listing.parts.end(), step.names.begin(),
                                    step.names.end());
    step.isLast = folder.reader->ended();
    if (step.isLast)
        finish(folder);
    return step;
}

// It is held where others are asked through it next.
std::optional<platform::DirectoryStamp> FolderLister::stampOf(AheadFolder& folder,
                                                              const FolderListing& known) const {
    const FolderAbove* above = folder.around ? &folder.around->folder : nullptr;
    const auto hasFolders = [](const ListedNamesPtr& names) { return !names->folders.empty(); };
    if (asksThoseIn(folder) && std::ranges::any_of(known.parts, hasFolders))
        folder.held = above != nullptr ? above->hold(folder.path)
                                       : std::make_shared<platform::HeldDirectory>(folder.path);
    if (folder.held && folder.held->isHeld())
        return folder.held->stamp();
    folder.held = nullptr;
    return above != nullptr ? above->stampOf(folder.path) : platform::directoryStamp(folder.path);
}

// False where the folder above was moved: those beside this one were perhaps no longer there.
bool FolderLister::recall(AheadFolder& folder) {
    folder.begun = remembered_->begin();
    folder.seen = FolderAbove::Clock::now();
    if (folder.around)
        folder.seen = folder.around->folder.seenThrough(folder.seen);
    auto known = remembered_->unchanged(
        folder.path, [&](const FolderListing& listing) { return stampOf(folder, listing); });
    const bool isMoved = folder.around && !folder.around->folder.finishOne();
    if (known && !isMoved) {
        folder.opened = true;
        folder.listing = std::move(*known);
    } else {
        folder.held = nullptr; // it may be another one that is listed now
    }
    return !isMoved;
}

// False when nothing is left to be listed.
bool FolderLister::open(AheadFolder& folder, ListedStep& step) {
    const bool isMoved = remembered_ && !recall(folder);
    const bool isKnown = folder.isKnown = folder.opened;
    auto reader = reader_ ? std::move(reader_) : std::make_unique<FolderReader>();
    if (!isKnown) {
        folder.problem = reader->open(folder.path);
        if (isMoved && folder.problem.ok()) // another one by now
            folder.problem = {ESTALE, platform::toNativePath(folder.around->folder.path()),
                              "moved during the search"};
        folder.opened = folder.problem.ok();
        folder.listing.stamp = reader->stamp();
        if (remembered_ && folder.opened)
            folder.listing.times = remembered_->timesOf(*reader);
    }
    folder.isCircular = folder.opened && isInside(folder.around.get(), folder.listing.stamp.id);
    const bool isToList = folder.opened && !folder.isCircular;
    if (isToList && isKnown)
        for (const ListedNamesPtr& names : folder.listing.parts)
            add(folder, names, step);
    if (isKnown) {
        folder.listing.parts = {};
        folder.inside = {};
        folder.held = {};
    }
    (isToList && !isKnown ? folder.reader : reader_) = std::move(reader);
    return folder.reader != nullptr;
}

void FolderLister::finish(AheadFolder& folder) {
    folder.problem = folder.reader->status();
    folder.listing.hasLinks = folder.reader->hasLinks();
    if (remembered_ && folder.problem.ok())
        remembered_->keep(folder.path, folder.listing, folder.begun);
    folder.listing.parts = {}; // what is not remembered goes when the walk has had it
    folder.inside = {};
    reader_ = std::move(folder.reader);
}

void FolderLister::add(AheadFolder& folder, const ListedNamesPtr& names, ListedStep& step) const {
    step.names.push_back(names);
    if (!asksThoseIn(folder))
        return;
    std::string_view rest = names->folders;
    for (ListedName subfolder; takeName(rest, subfolder);) {
        if (subfolder.hasBackslash)
            continue;
        if (!folder.inside)
            folder.inside =
                std::make_shared<FoldersAround>(folder.path, folder.listing.stamp.id, folder.around,
                                                std::exchange(folder.held, nullptr), folder.seen);
        folder.inside->folder.expectOne();
        step.subfolders.push_back(std::make_shared<AheadFolder>(
            std::string(folder.path).append(subfolder.name).append(1, '\\'), folder.depth + 1,
            folder.inside));
    }
}

} // namespace ov::modDictation
