// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "dictation/search/collation_key.h"

#include <gtest/gtest.h>
#include <unicode/coll.h>

#include <random>
#include <utility>

namespace ov::modDictation {
namespace {

std::string randomText(std::mt19937& dice) {
    // Near relatives, so that every level of the comparison decides some pairs; the last ones
    // are outside of what is looked up, the Czech "ch" is one letter.
    static constexpr const char* pieces[] = {
        "a",  "A",      "ä", "Ä", "á", "b", "c", "h",  "ch",     "s",     "ss", "ß",
        "o",  "ø",      "œ", "z", "1", "2", "9", "0",  "-",      ".",     " ",  "$",
        "\"", "\u00a0", "ł", "'", "e", "é", "я", "中", "\u0308", "\u0323"};
    std::string text;
    for (std::size_t left = dice() % 7; left > 0; --left)
        text += pieces[dice() % std::size(pieces)];
    return text;
}

// Two texts of the same letters, of which the accents alone decide.
std::pair<std::string, std::string> relatives(std::mt19937& dice) {
    static constexpr const char* letters[][4] = {{"a", "A", "ä", "á"}, {"o", "ö", "ô", "O"}};
    std::pair<std::string, std::string> both;
    for (std::size_t left = dice() % 7; left > 0; --left) {
        const auto& letter = letters[dice() % 2];
        both.first += letter[dice() % 4];
        both.second += letter[dice() % 4];
    }
    return both;
}

// As the library compares two texts, the slow plain way; an accent counts however far behind.
TEST(CollationKeys, OrderTextsAsTheLibraryDoes) {
    const std::string far(600, 'x');
    for (const char* locale : {"de", "en", "sv", "cs"}) {
        std::mt19937 dice(20261121);
        UErrorCode error = U_ZERO_ERROR;
        const std::unique_ptr<icu::Collator> plain(icu::Collator::createInstance(locale, error));
        plain->setStrength(icu::Collator::SECONDARY);
        plain->setAttribute(UCOL_NUMERIC_COLLATION, UCOL_ON, error);
        plain->setAttribute(UCOL_NORMALIZATION_MODE, UCOL_ON, error);
        const CollationAlphabet alphabet(locale);
        CollationKeys keys(alphabet);
        for (int i = 0; i < 20000; ++i) {
            const std::string before = i % 200 == 0 ? far : "";
            const auto [one, other] =
                i % 2 == 0 ? std::pair(randomText(dice), randomText(dice)) : relatives(dice);
            const std::string a = before + one + before;
            const std::string b = before + other + before;
            std::string keyA;
            std::string keyB;
            keys.append(a, keyA);
            keys.append(b, keyB);
            const int order = keyA.compare(keyB);
            ASSERT_EQ((order > 0) - (order < 0), plain->compareUTF8(a, b, error))
                << locale << " '" << a << "' '" << b << "'";
        }
    }
}

} // namespace
} // namespace ov::modDictation
