// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

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

    // `index` is from 1 to size(). Bytes as the file system has them.
    std::string_view directory(std::int32_t index) const;
    std::string_view fileName(std::int32_t index) const;
    std::string path(std::int32_t index) const;

    void clear() noexcept;

private:
    struct Entry {
        const char* name;
        std::uint32_t length;
        std::uint32_t directory;
    };

    const char* keep(std::string_view text);
    const Entry& entry(std::int32_t index) const {
        return entries_.at(static_cast<std::size_t>(index) - 1);
    }

    std::deque<Entry> entries_;
    std::deque<std::string> directories_;
    std::vector<std::unique_ptr<char[]>> blocks_;
    char* blockEnd_ = nullptr; // of the last block
    std::size_t free_ = 0;     // bytes left in it
};

} // namespace ov::modDictation
