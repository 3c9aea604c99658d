// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace ov::modDictation {

// A hit and the bytes that it sorts by.
struct TextEntry {
    TextEntry() = default;
    TextEntry(std::string_view bytes, std::int32_t hit);

    std::uint64_t chunk = 0; // the eight bytes of the key that are being compared
    const char* key = nullptr;
    std::uint32_t length = 0;
    std::int32_t index = 0;
};

// Sorts entries by their keys, equal ones by their index, on threads. It goes by eight bytes of
// the keys at a time: what a comparison needs lies in the entry, and only entries that are equal so
// far look at their next bytes.
class TextSorter {
public:
    TextSorter(std::vector<TextEntry>& entries, unsigned threads)
        : entries_(entries), spare_(entries.size()), threads_(threads) {}

    // The entries whose key equals that of the one before have none afterwards.
    void sort();

private:
    using Run = std::span<TextEntry>;

    void sortChunks(Run run, std::size_t depth);
    void sortLongRun(Run run, std::size_t depth);
    bool readChunks(Run run, std::size_t depth) const;

    std::vector<TextEntry>& entries_;
    std::vector<TextEntry> spare_;
    unsigned threads_;
};

} // namespace ov::modDictation
