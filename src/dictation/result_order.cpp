// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "dictation/result_order.h"

#include "dictation/dictation_record.h"
#include "dictation/field_table.h"
#include "dictation/field_values.h"
#include "support/modLanguage.h"

#include <unicode/ucol.h>
#include <unicode/uloc.h>
#include <unicode/ustring.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <string>

namespace ov::modDictation {

namespace {

constexpr std::int32_t german = 7;

struct CollatorCloser {
    void operator()(UCollator* collator) const noexcept { ucol_close(collator); }
};
using Collator = std::unique_ptr<UCollator, CollatorCloser>;

// The alphabet of the user's country; a process without a country takes that of the language.
std::string alphabet() {
    std::string locale = uloc_getDefault();
    if (!locale.starts_with("en_US_POSIX"))
        return locale;
    const std::int32_t language = modLanguage::Language();
    return language == 0 || language == german ? "de" : "en";
}

Collator openCollator() {
    UErrorCode error = U_ZERO_ERROR;
    Collator collator(ucol_open(alphabet().c_str(), &error));
    if (U_FAILURE(error))
        return nullptr;
    ucol_setStrength(collator.get(), UCOL_SECONDARY); // accents count, case does not
    ucol_setAttribute(collator.get(), UCOL_NUMERIC_COLLATION, UCOL_ON, &error);
    return collator;
}

// Turns texts into bytes that compare as the alphabet orders them.
class SortKeyMaker {
public:
    std::string_view key(std::string_view text) {
        if (!collator_)
            return text;
        units_.resize(text.size() + 1);
        UErrorCode error = U_ZERO_ERROR;
        std::int32_t length = 0;
        u_strFromUTF8WithSub(units_.data(), static_cast<std::int32_t>(units_.size()), &length,
                             text.data(), static_cast<std::int32_t>(text.size()), 0xFFFD, nullptr,
                             &error);
        std::int32_t size = sortKey(length);
        if (static_cast<std::size_t>(size) > key_.size()) {
            key_.resize(static_cast<std::size_t>(size));
            size = sortKey(length);
        }
        return {reinterpret_cast<const char*>(key_.data()), static_cast<std::size_t>(size)};
    }

private:
    std::int32_t sortKey(std::int32_t length) {
        return ucol_getSortKey(collator_.get(), units_.data(), length, key_.data(),
                               static_cast<std::int32_t>(key_.size()));
    }

    Collator collator_ = openCollator();
    std::vector<char16_t> units_;
    std::vector<std::uint8_t> key_ = std::vector<std::uint8_t>(256);
};

struct NumberEntry {
    double number;
    std::int32_t index;
};

// The first bytes decide most comparisons without leaving the array.
struct TextEntry {
    std::uint64_t prefix;
    std::size_t start;
    std::uint32_t length;
    std::int32_t index;
};

std::uint64_t prefixOf(std::string_view key) noexcept {
    std::uint64_t prefix = 0;
    for (std::size_t i = 0; i < sizeof prefix; ++i)
        prefix = prefix << 8U | (i < key.size() ? static_cast<unsigned char>(key[i]) : 0U);
    return prefix;
}

// Calls `visit(index, directory, name)` for every hit.
template <typename Visit>
void forEachHit(const DictationList& list, Visit visit) {
    std::string buffer;
    for (std::int32_t i = 1; i <= list.size(); ++i)
        visit(i, list.directory(i), dictationName(list.fileName(i), buffer));
}

// Equal entries keep their order in both directions.
template <typename Entry, typename Less>
std::vector<std::int32_t> indexesInOrder(std::vector<Entry>& entries, bool descending, Less less) {
    std::sort(entries.begin(), entries.end(), [&](const Entry& a, const Entry& b) {
        const bool aFirst = descending ? less(b, a) : less(a, b);
        const bool bFirst = descending ? less(a, b) : less(b, a);
        return aFirst || (!bFirst && a.index < b.index);
    });
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
    forEachHit(list, [&](std::int32_t i, std::string_view path, std::string_view name) {
        entries.push_back({fieldNumber(field, path, name), i});
    });
    return indexesInOrder(entries, descending, [](const NumberEntry& a, const NumberEntry& b) {
        return a.number < b.number;
    });
}

std::vector<std::int32_t> orderByText(const DictationList& list, std::int32_t field,
                                      bool descending) {
    SortKeyMaker maker;
    std::string keys;
    std::vector<TextEntry> entries;
    entries.reserve(static_cast<std::size_t>(list.size()));
    forEachHit(list, [&](std::int32_t i, std::string_view path, std::string_view name) {
        const std::string text = fieldText(field, path, name);
        const std::string_view key = maker.key(text);
        entries.push_back({prefixOf(key), keys.size(), static_cast<std::uint32_t>(key.size()), i});
        keys.append(key);
    });
    const auto keyOf = [&keys](const TextEntry& entry) {
        return std::string_view(keys).substr(entry.start, entry.length);
    };
    return indexesInOrder(entries, descending, [&](const TextEntry& a, const TextEntry& b) {
        return a.prefix != b.prefix ? a.prefix < b.prefix : keyOf(a) < keyOf(b);
    });
}

} // namespace

std::vector<std::int32_t> sortedOrder(const DictationList& list, std::int32_t field,
                                      bool descending) {
    return sortsByNumber(field) ? orderByNumber(list, field, descending)
                                : orderByText(list, field, descending);
}

} // namespace ov::modDictation
