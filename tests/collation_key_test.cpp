// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "dictation/search/collation_key.h"

#include <gtest/gtest.h>
#include <unicode/coll.h>

#include <array>
#include <memory>
#include <random>
#include <string>

namespace ov::modDictation {
namespace {

std::string randomText(std::mt19937& dice) {
    // Near relatives, so that every level of the comparison decides some pairs; the last ones
    // are outside of what is looked up, the Czech "ch" is one letter.
    static const std::array<const char*, 34> pieces = {
        "a",  "A",      "ä", "Ä", "á", "b", "c", "h",  "ch",     "s",     "ss", "ß",
        "o",  "ø",      "œ", "z", "1", "2", "9", "0",  "-",      ".",     " ",  "$",
        "\"", "\u00a0", "ł", "'", "e", "é", "я", "中", "\u0308", "\u0323"};
    std::string text;
    for (std::size_t left = dice() % 7; left > 0; --left)
        text += pieces[dice() % pieces.size()];
    return text;
}

// The slow plain way: the library compares two texts.
std::unique_ptr<icu::Collator> plainOrder(const char* locale, UErrorCode& error) {
    std::unique_ptr<icu::Collator> order(icu::Collator::createInstance(locale, error));
    order->setStrength(icu::Collator::SECONDARY);
    order->setAttribute(UCOL_NUMERIC_COLLATION, UCOL_ON, error);
    order->setAttribute(UCOL_NORMALIZATION_MODE, UCOL_ON, error);
    return order;
}

TEST(CollationKeys, OrderTextsAsTheLibraryDoes) {
    for (const char* locale : {"de", "en", "sv", "cs"}) {
        std::mt19937 dice(20261121);
        UErrorCode error = U_ZERO_ERROR;
        const auto plain = plainOrder(locale, error);
        CollationKeys keys(locale);
        for (int i = 0; i < 20000; ++i) {
            const std::string a = randomText(dice);
            const std::string b = randomText(dice);
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

TEST(CollationKeys, CountAnAccentHoweverFarBehind) {
    const std::string far(600, 'x');
    CollationKeys keys("de");
    std::string plain;
    std::string early;
    std::string late;
    keys.append(far + "a" + far + "a", plain);
    keys.append(far + "ä" + far + "a", early);
    keys.append(far + "a" + far + "ä", late);
    EXPECT_LT(plain, late);
    EXPECT_LT(late, early);
}

} // namespace
} // namespace ov::modDictation
