// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "dictation/search/dictation_list.h"

#include <algorithm>
#include <cstring>

namespace ov::modDictation {

namespace {

constexpr std::size_t blockSize = std::size_t{256} * 1024;

} // namespace

void DictationList::add(std::string_view directory, std::string_view fileName) {
    if (directories_.empty() || directories_.back() != directory)
        directories_.emplace_back(directory);
    entries_.push_back({keep(fileName), static_cast<std::uint32_t>(fileName.size()),
                        static_cast<std::uint32_t>(directories_.size() - 1)});
}

const char* DictationList::keep(std::string_view text) {
    if (text.size() > free_) {
        free_ = std::max(blockSize, text.size());
        blocks_.push_back(std::make_unique<char[]>(free_));
        blockEnd_ = blocks_.back().get() + free_;
    }
    char* place = blockEnd_ - free_;
    std::memcpy(place, text.data(), text.size());
    free_ -= text.size();
    return place;
}

std::string_view DictationList::directory(std::int32_t index) const {
    return directories_.at(entry(index).directory);
}

std::string_view DictationList::fileName(std::int32_t index) const {
    const Entry& found = entry(index);
    return {found.name, found.length};
}

std::string DictationList::path(std::int32_t index) const {
    return std::string(directory(index)).append(fileName(index));
}

void DictationList::clear() noexcept {
    entries_.clear();
    directories_.clear();
    blocks_.clear();
    free_ = 0;
}

} // namespace ov::modDictation
