// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "dictation/search/result_order.h"

#include "dictation/field_table.h"
#include "dictation/field_values.h"
#include "dictation/search/collation_key.h"
#include "dictation/search/ordered_steps.h"
#include "platform/user_interface.h"
#include "support/block_arena.h"
#include "support/language/language_id.h"
#include "support/language/modLanguage.h"

#include <unicode/uloc.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <string>
#include <utility>

namespace ov::modDictation {

namespace {

// The alphabet of the user's country; a process without a country takes that of the language.
std::string alphabet() {
    std::string locale = uloc_getDefault();
    if (!locale.starts_with("en_US_POSIX"))
        return locale;
    const std::int32_t language = modLanguage::Language();
    return language_id::isGerman(language) ? "de" : "en";
}

struct NumberEntry {
    double number;
    std::int32_t index;
};

// `chunk` holds the eight bytes of the key that are being compared.
struct TextEntry {
    std::uint64_t chunk;
    const char* key;
    std::uint32_t length;
    std::int32_t index;
};

constexpr std::size_t chunkSize = sizeof(std::uint64_t);

// As a number that compares as the bytes do.
std::uint64_t chunkOf(std::string_view key) noexcept {
    std::array<unsigned char, chunkSize> bytes{};
    std::memcpy(bytes.data(), key.data(), std::min(key.size(), chunkSize));
    const auto at = [&bytes](std::size_t i) { return std::uint64_t{bytes[i]}; };
    return at(0) << 56U | at(1) << 48U | at(2) << 40U | at(3) << 32U | at(4) << 24U | at(5) << 16U |
           at(6) << 8U | at(7);
}

// Calls `visit(index, dictation)` for every hit.
template <typename Visit>
void forEachHit(const DictationList& list, Visit visit) {
    for (std::int32_t i = 1; i <= list.size(); ++i) {
        visit(i, list[i]);
        platform::processMessagesNowAndThen();
    }
}

template <typename Entry>
std::vector<std::int32_t> indexesOf(const std::vector<Entry>& entries) {
    std::vector<std::int32_t> order;
    order.reserve(entries.size());
    for (const Entry& entry : entries)
        order.push_back(entry.index);
    return order;
}

std::vector<std::int32_t> orderByNumber(const DictationList& list, std::int32_t field,
                                        bool descending) {
    std::vector<NumberEntry> entries;
    entries.reserve(static_cast<std::size_t>(list.size()));
    forEachHit(list, [&](std::int32_t i, const Dictation& dictation) {
        const double number = sortNumber(field, dictation);
        entries.push_back({descending ? -number : number, i});
    });
    std::vector<NumberEntry> spare(entries.size());
    sortInSteps(entries.data(), entries.data() + entries.size(), spare.data(),
                [](const NumberEntry& a, const NumberEntry& b) {
                    return a.number != b.number ? a.number < b.number : a.index < b.index;
                });
    return indexesOf(entries);
}

// Sorts by eight bytes of the keys at a time: what a comparison needs lies in the entry, and only
// entries that are equal so far look at their next bytes.
class TextSorter {
public:
    TextSorter(std::vector<TextEntry>& entries, bool descending)
        : entries_(entries), spare_(entries.size()), descending_(descending) {}

    void sort() { sortFrom(entries_.data(), entries_.data() + entries_.size(), 0); }

private:
    void sortFrom(TextEntry* first, TextEntry* last, std::size_t depth);
    bool readChunks(TextEntry* first, TextEntry* last, std::size_t depth) const;

    std::vector<TextEntry>& entries_;
    std::vector<TextEntry> spare_;
    bool descending_;
};

// False when no entry has any byte left.
bool TextSorter::readChunks(TextEntry* first, TextEntry* last, std::size_t depth) const {
    bool any = false;
    for (TextEntry* entry = first; entry != last; ++entry) {
        const std::size_t left = entry->length > depth ? entry->length - depth : 0;
        any = any || left > 0;
        const std::uint64_t chunk =
            chunkOf(std::string_view(entry->key + (left > 0 ? depth : 0), left));
        entry->chunk = descending_ ? ~chunk : chunk;
        platform::processMessagesNowAndThen();
    }
    return any;
}

void TextSorter::sortFrom(TextEntry* first, TextEntry* last, std::size_t depth) {
    for (; readChunks(first, last, depth); depth += chunkSize) {
        const auto differs = [first](const TextEntry& e) { return e.chunk != first->chunk; };
        if (std::none_of(first, last, differs))
            continue; // a long beginning that all have in common
        sortInSteps(first, last, spare_.data(), [](const TextEntry& a, const TextEntry& b) {
            return a.chunk != b.chunk ? a.chunk < b.chunk : a.index < b.index;
        });
        for (TextEntry* start = first; start != last;) {
            TextEntry* end = start + 1;
            while (end != last && end->chunk == start->chunk)
                ++end;
            if (end - start > 1)
                sortFrom(start, end, depth + chunkSize);
            start = end;
        }
        return;
    }
}

std::vector<std::int32_t> orderByText(const DictationList& list, std::int32_t field,
                                      bool descending) {
    CollationKeys collation(alphabet());
    BlockArena keys(std::size_t{1} << 20U);
    std::string key;
    std::vector<TextEntry> entries;
    entries.reserve(static_cast<std::size_t>(list.size()));
    forEachHit(list, [&](std::int32_t i, const Dictation& dictation) {
        key.clear();
        collation.append(shownValue(field, dictation), key);
        entries.push_back({0, keys.keep(key), static_cast<std::uint32_t>(key.size()), i});
    });
    TextSorter(entries, descending).sort();
    return indexesOf(entries);
}

} // namespace

std::vector<std::int32_t> sortedOrder(const DictationList& list, std::int32_t field,
                                      bool descending) {
    return sortsByNumber(field) ? orderByNumber(list, field, descending)
                                : orderByText(list, field, descending);
}

} // namespace ov::modDictation
