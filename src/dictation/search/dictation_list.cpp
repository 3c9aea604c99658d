// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "dictation/search/dictation_list.h"

namespace ov::modDictation {

void DictationList::add(std::string_view directory, std::string_view fileName) {
    if (directories_.empty() || directories_.back() != directory)
        directories_.emplace_back(directory);
    entries_.push_back({names_.keep(fileName), static_cast<std::uint32_t>(fileName.size()),
                        static_cast<std::uint32_t>(directories_.size() - 1)});
}

Dictation DictationList::operator[](std::int32_t index) const {
    const Entry& entry = entries_.at(static_cast<std::size_t>(index) - 1);
    return {directories_.at(entry.directory), {entry.name, entry.length}};
}

void DictationList::clear() noexcept {
    entries_.clear();
    directories_.clear();
    names_.clear();
}

} // namespace ov::modDictation
