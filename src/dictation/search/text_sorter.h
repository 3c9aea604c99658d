// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string_view>

namespace ov::modDictation {

// A hit and the bytes that it sorts by. Without initial values: millions of them would be written
// twice.
struct TextEntry {
    std::uint64_t chunk; // the eight bytes of the key that are being compared
    const char* key;
    std::uint32_t length;
    std::int32_t index;
};
TextEntry textEntry(std::string_view key, std::int32_t index) noexcept;

// Sorts entries by their keys, equal ones by their index, on threads. It goes by eight bytes of
// the keys at a time: what a comparison needs lies in the entry, and only entries that are equal so
// far look at their next bytes.
class TextSorter {
public:
    TextSorter(std::span<TextEntry> entries, unsigned threads)
        : entries_(entries),
          spare_(std::make_unique_for_overwrite<TextEntry[]>(entries.size())),
          threads_(threads) {}

    // The entries whose key equals that of the one before have none afterwards.
    void sort();

private:
    using Run = std::span<TextEntry>;

    void sortChunks(Run run, std::size_t depth);
    void sortLongRun(Run run, std::size_t depth);
    bool readChunks(Run run, std::size_t depth) const;

    Run entries_;
    std::unique_ptr<TextEntry[]> spare_;
    unsigned threads_;
};

} // namespace ov::modDictation
