// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "dictation/search/collation_key.h"

#include <unicode/ustring.h>

#include <algorithm>

namespace ov::modDictation {

namespace {

constexpr std::uint8_t noAccent = 5;       // the library's weight of a letter without one
constexpr std::size_t mostPrimaries = 125; // so that twice their place fits a byte

bool isDigit(char16_t unit) noexcept {
    return unit >= u'0' && unit <= u'9';
}

std::uint16_t primaryOf(std::uint32_t weights) noexcept {
    return static_cast<std::uint16_t>(weights >> 16U);
}

std::uint8_t accentOf(std::uint32_t weights) noexcept {
    return static_cast<std::uint8_t>(weights >> 8U & 0xFFU);
}

// Decodes one character of one or two bytes, all that the table has. 0 for any other.
char16_t nextLatin(std::string_view utf8, std::size_t& at) noexcept {
    const auto first = static_cast<unsigned char>(utf8[at]);
    if (first < 0x80) {
        ++at;
        return first;
    }
    if (first < 0xC2 || first > 0xDF || at + 1 >= utf8.size())
        return 0;
    const auto second = static_cast<unsigned char>(utf8[at + 1]);
    if ((second & 0xC0U) != 0x80U)
        return 0;
    at += 2;
    return static_cast<char16_t>((first & 0x1FU) << 6U | (second & 0x3FU));
}

} // namespace

CollationAlphabet::CollationAlphabet(const std::string& locale) {
    if (const platform::LocaleModule* module = platform::localeModule(); module != nullptr)
        library_ = module->alphabet(locale);
    const std::unique_ptr<platform::TextWeights> weights = library();
    if (!weights)
        return;
    readTable(*weights);
    forgetContractions();
    rankPrimaries();
}

std::unique_ptr<platform::TextWeights> CollationAlphabet::library() const {
    return library_ ? library_->weights() : nullptr;
}

void CollationAlphabet::readTable(platform::TextWeights& library) {
    std::vector<std::uint32_t> found;
    for (char16_t unit = 1; unit < tableEnd; ++unit) {
        library.weigh({&unit, 1}, found);
        Weights& weights = table_[unit];
        weights.known = found.size() <= mostElements;
        if (!weights.known)
            continue;
        for (const std::uint32_t element : found)
            weights.elements[weights.count++] = {primaryOf(element), accentOf(element), 0};
    }
}

// A character that the alphabet joins with the one before it has no weight of its own.
void CollationAlphabet::forgetContractions() {
    for (const std::u16string& text : library_->joined()) {
        if (text[0] >= tableEnd)
            continue; // a text with that character is never looked up
        for (const char16_t unit : std::u16string_view(text).substr(1))
            if (unit < tableEnd)
                table_[unit].known = false;
    }
}

void CollationAlphabet::rankPrimaries() {
    for (const Weights& weights : table_)
        for (const Element& element : weights.elements)
            if (element.primary != 0)
                primaries_.push_back(element.primary);
    std::sort(primaries_.begin(), primaries_.end());
    primaries_.erase(std::unique(primaries_.begin(), primaries_.end()), primaries_.end());
    if (primaries_.size() > mostPrimaries)
        primaries_.resize(mostPrimaries); // what lies beyond is written in full
    for (Weights& weights : table_)
        for (Element& element : weights.elements)
            element.rank = rankOf(element.primary);
    digitByte_ = table_[u'0'].elements[0].rank;
    rankPlain();
}

void CollationAlphabet::rankPlain() {
    for (char16_t unit = 1; unit < 0x80; ++unit) {
        const Weights& weights = table_[unit];
        const Element& element = weights.elements[0];
        if (weights.known && weights.count == 1 && element.accent == noAccent &&
            element.rank % 2 == 0 && !isDigit(unit))
            plainRanks_[unit] = element.rank;
    }
}

// 4, 6, 8 ... for a weight of the table, the odd number above its lower neighbour's for another.
std::uint8_t CollationAlphabet::rankOf(std::uint16_t primary) const {
    if (primary == 0)
        return 0;
    const auto above = std::upper_bound(primaries_.begin(), primaries_.end(), primary);
    const auto notAbove = static_cast<std::size_t>(above - primaries_.begin());
    const bool inTable = notAbove > 0 && primaries_[notAbove - 1] == primary;
    return static_cast<std::uint8_t>(2 * notAbove + (inTable ? 2 : 3));
}

void CollationKeys::append(std::string_view utf8, std::string& keys) {
    if (!library_) {
        keys.append(utf8);
        finish(keys); // no key is empty
        return;
    }
    const std::size_t start = keys.size();
    forgetAccents();
    if (!appendFast(utf8, keys)) {
        keys.resize(start);
        forgetAccents();
        appendSlow(utf8, keys);
    }
    finish(keys);
}

// How many bytes from the start are plain characters, at most as many as a name has.
std::size_t CollationKeys::appendPlain(std::string_view utf8, std::string& keys) {
    std::array<char, 256> ranks; // NOLINT(*-member-init): filled as far as it is read
    std::size_t count = 0;
    for (const std::size_t end = std::min(utf8.size(), ranks.size()); count < end; ++count) {
        const std::uint8_t rank = alphabet_.plainRanks_[static_cast<unsigned char>(utf8[count])];
        if (rank == 0)
            break;
        ranks[count] = static_cast<char>(rank);
    }
    keys.append(ranks.data(), count);
    plain_ += count;
    return count;
}

bool CollationKeys::appendFast(std::string_view utf8, std::string& keys) {
    for (std::size_t at = 0; at < utf8.size();) {
        at += appendPlain(utf8.substr(at), keys);
        if (at == utf8.size())
            break;
        if (isDigit(static_cast<unsigned char>(utf8[at]))) {
            const std::string_view rest = utf8.substr(at);
            const std::size_t end = std::min(rest.find_first_not_of("0123456789"), rest.size());
            addNumber(rest.substr(0, end), keys);
            at += end;
            continue;
        }
        const char16_t unit = nextLatin(utf8, at);
        if (unit >= CollationAlphabet::tableEnd || !alphabet_.table_[unit].known)
            return false;
        const CollationAlphabet::Weights& weights = alphabet_.table_[unit];
        for (std::uint8_t i = 0; i < weights.count; ++i)
            addElement(weights.elements[i], keys);
    }
    return true;
}

void CollationKeys::appendSlow(std::string_view utf8, std::string& keys) {
    std::u16string text(utf8.size(), u'\0'); // never more units than bytes
    UErrorCode error = U_ZERO_ERROR;
    std::int32_t length = 0;
    u_strFromUTF8WithSub(text.data(), static_cast<std::int32_t>(text.size()), &length, utf8.data(),
                         static_cast<std::int32_t>(utf8.size()), 0xFFFD, nullptr, &error);
    const auto rest = std::u16string_view(text).substr(0, static_cast<std::size_t>(length));
    for (std::size_t at = 0; at < rest.size();) {
        const bool number = isDigit(rest[at]);
        std::size_t end = at;
        while (end < rest.size() && isDigit(rest[end]) == number)
            ++end;
        if (number)
            addNumber(rest.substr(at, end - at), keys);
        else
            weigh(rest.substr(at, end - at), keys);
        at = end;
    }
}

void CollationKeys::weigh(std::u16string_view text, std::string& keys) {
    library_->weigh(text, weights_);
    for (const std::uint32_t weights : weights_) {
        const std::uint16_t primary = primaryOf(weights);
        addElement({primary, accentOf(weights), alphabet_.rankOf(primary)}, keys);
    }
}

void CollationKeys::addElement(const Element& element, std::string& keys) {
    if (element.rank != 0) {
        keys += static_cast<char>(element.rank);
        if (element.rank % 2 != 0) {
            keys += static_cast<char>(element.primary >> 8U);
            keys += static_cast<char>(element.primary & 0xFFU);
        }
    }
    addAccent(element.accent);
}

// Which of two texts has the first accent decides, so a longer way to it counts less.
void CollationKeys::addAccent(std::uint8_t accent) {
    if (accent == 0)
        return;
    if (accent == noAccent) {
        ++plain_;
        return;
    }
    constexpr std::size_t furthest = 250;
    constexpr char further = 1;
    for (; plain_ >= furthest; plain_ -= furthest)
        accents_ += further;
    accents_ += static_cast<char>(0xFFU - plain_);
    accents_ += static_cast<char>(accent);
    plain_ = 0;
}

template <typename Unit>
void CollationKeys::addNumber(std::basic_string_view<Unit> digits, std::string& keys) {
    while (digits.size() > 1 && digits.front() == '0')
        digits.remove_prefix(1);
    constexpr std::size_t most = 0xFFFF;
    digits = digits.substr(0, most);
    keys += static_cast<char>(alphabet_.digitByte_);
    keys += static_cast<char>(digits.size() >> 8U);
    keys += static_cast<char>(digits.size() & 0xFFU);
    for (const Unit digit : digits)
        keys += static_cast<char>(digit);
    addAccent(noAccent);
}

void CollationKeys::finish(std::string& keys) {
    keys += '\0';
    keys.append(accents_);
}

} // namespace ov::modDictation
