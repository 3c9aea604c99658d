// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "dictation/search/dictation_list.h"

#include <algorithm>

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

// Those of a run of equal directories stand together.
std::int32_t DictationList::find(const Dictation& dictation) const {
    for (std::uint32_t i = 0; i < directories_.size(); ++i) {
        if (directories_[i] != dictation.directory)
            continue;
        const auto first = std::ranges::lower_bound(entries_, i, {}, &Entry::directory);
        const auto last = std::ranges::upper_bound(first, entries_.end(), i, {}, &Entry::directory);
        const auto found = std::find_if(first, last, [&](const Entry& entry) {
            return std::string_view(entry.name, entry.length) == dictation.name;
        });
        if (found != last)
            return static_cast<std::int32_t>(found - entries_.begin()) + 1;
    }
    return 0;
}

void DictationList::clear() noexcept {
    entries_.clear();
    directories_.clear();
    names_.clear();
}

} // namespace ov::modDictation
