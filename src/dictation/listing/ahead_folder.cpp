// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "dictation/listing/ahead_folder.h"

#include <algorithm>

namespace ov::modDictation {

bool isInside(const FoldersAround* around, const platform::DirectoryId& id) noexcept {
    while (around != nullptr && around->folder.id() != id)
        around = around->next.get();
    return around != nullptr;
}

void Frontier::setRoot(const AheadFolderPtr& root) {
    insert(places_.end(), root);
}

void Frontier::addSubfolder(AheadFolder& folder, const AheadFolderPtr& subfolder) {
    insert(spans_.at(&folder).end, subfolder);
}

void Frontier::insert(Places::iterator before, const AheadFolderPtr& folder) {
    const auto end = places_.insert(before, nullptr);
    spans_.emplace(folder.get(), Span{places_.insert(end, folder), end});
}

void Frontier::remove(AheadFolder& folder) {
    const auto found = spans_.find(&folder);
    places_.erase(found->second.begin);
    places_.erase(found->second.end);
    spans_.erase(found);
}

AheadFolderPtr Frontier::firstIdle() const {
    const auto found = std::ranges::find_if(
        places_, [](const AheadFolderPtr& folder) { return folder && !folder->isInWork; });
    return found == places_.end() ? nullptr : *found;
}

} // namespace ov::modDictation
