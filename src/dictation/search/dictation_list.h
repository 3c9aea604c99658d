// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "dictation/dictation.h"
#include "support/block_arena.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <string_view>

namespace ov::modDictation {

// The hits of a search, in the order found, counted from 1. A hit keeps its file name; the
// directory is stored once for all its hits. A million hits take their names and some twenty
// bytes each, and nothing is ever moved while the list grows.
class DictationList {
public:
    DictationList() = default;
    DictationList(const DictationList&) = delete;
    DictationList& operator=(const DictationList&) = delete;

    // `directory` ends in "\", or is empty for hits that are stored as bare names. Directories
    // are expected in runs: only that of the hit before is recognised.
    void add(std::string_view directory, std::string_view fileName);

    std::int32_t size() const noexcept { return static_cast<std::int32_t>(entries_.size()); }
    bool empty() const noexcept { return entries_.empty(); }

    // `index` is from 1 to size().
    Dictation operator[](std::int32_t index) const;

    // The index of that hit, 0 when it is none. Looks at the directories and then only at the names
    // of one: a window may ask.
    std::int32_t find(const Dictation& dictation) const;

    void clear() noexcept;

private:
    struct Entry {
        const char* name;
        std::uint32_t length;
        std::uint32_t directory;
    };

    std::deque<Entry> entries_;
    std::deque<std::string> directories_;
    BlockArena names_{std::size_t{256} * 1024};
};

} // namespace ov::modDictation
