// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "platform/locale_module.h"

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace ov::modDictation {

// Turns texts into bytes that compare as the alphabet of a language orders the texts: letter case
// does not count, accents count where letters are the same, digits in a row count as a number
// (9 before 10).
//
// The collation library's own sort keys take two microseconds for a file name. Here the weights
// of Latin letters are asked for once and looked up from then on, in a tenth of that; any text
// with other characters is weighed by the library, one by one, on the same scale.
//
// A key is
//   for each character that has a primary weight, one byte: twice the place of its weight among
//     those of the Latin letters, from 4 on; or, for a weight between two of those, the odd byte
//     between and the weight's two bytes
//   for digits in a row, the byte of the digit 0, two bytes for how many there are without
//     leading zeros, and a byte for each
//   a zero byte, then for each accent a byte for how many characters without one are before it,
//     and its weight
//
// The weights of an alphabet, which any number of threads may look up.
class CollationAlphabet {
public:
    // `locale` as the collation library names it ("de", "en_GB").
    explicit CollationAlphabet(const std::string& locale);
    ~CollationAlphabet() = default;
    CollationAlphabet(const CollationAlphabet&) = delete;
    CollationAlphabet& operator=(const CollationAlphabet&) = delete;

private:
    friend class CollationKeys;

    // Of the code units below this the weights are kept.
    static constexpr char16_t tableEnd = 0x180;
    static constexpr std::size_t mostElements = 3;

    struct Element {
        std::uint16_t primary = 0;
        std::uint8_t accent = 0;
        std::uint8_t rank = 0; // of the primary weight; 0 for no weight
    };
    struct Weights {
        std::array<Element, mostElements> elements{};
        std::uint8_t count = 0;
        bool known = false; // false: the character must be weighed with its neighbours
    };

    std::unique_ptr<platform::TextWeights> library() const;
    void readTable(platform::TextWeights& library);
    void forgetContractions();
    void rankPrimaries();
    void rankPlain();
    std::uint8_t rankOf(std::uint16_t primary) const;

    std::unique_ptr<const platform::Alphabet> library_;
    std::array<Weights, tableEnd> table_{};
    std::vector<std::uint16_t> primaries_; // of the table, ascending
    // Of the bytes that are a character by themselves, no digit, with one weight and no accent.
    std::array<std::uint8_t, 256> plainRanks_{};
    std::uint8_t digitByte_ = 0;
};

// Writes keys. For one thread.
class CollationKeys {
public:
    // The alphabet must live longer.
    explicit CollationKeys(const CollationAlphabet& alphabet)
        : alphabet_(alphabet), library_(alphabet.library()) {}

    // Appends the key of `utf8`. Bytes that are no UTF-8 count as the replacement character.
    void append(std::string_view utf8, std::string& keys);

private:
    using Element = CollationAlphabet::Element;

    bool appendFast(std::string_view utf8, std::string& keys);
    std::size_t appendPlain(std::string_view utf8, std::string& keys);
    void appendSlow(std::string_view utf8, std::string& keys);
    void weigh(std::u16string_view text, std::string& keys);
    void addElement(const Element& element, std::string& keys);
    template <typename Unit>
    void addNumber(std::basic_string_view<Unit> digits, std::string& keys);
    void addAccent(std::uint8_t accent);
    void forgetAccents() {
        accents_.clear();
        plain_ = 0;
    }
    void finish(std::string& keys);

    const CollationAlphabet& alphabet_;
    std::unique_ptr<platform::TextWeights> library_; // empty: texts are ordered by their bytes
    std::vector<std::uint32_t> weights_;
    std::string accents_;   // of the text at hand
    std::size_t plain_ = 0; // characters since the last accent
};

} // namespace ov::modDictation
