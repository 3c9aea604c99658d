// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "dictation/collation_key.h"

#include <gtest/gtest.h>
#include <unicode/ucol.h>
#include <unicode/unistr.h>

#include <array>
#include <memory>
#include <random>
#include <string>
#include <vector>

namespace ov::modDictation {
namespace {

// The slow plain way: the library compares two texts.
class PlainOrder {
public:
    explicit PlainOrder(const char* locale) {
        UErrorCode error = U_ZERO_ERROR;
        collator_.reset(ucol_open(locale, &error));
        ucol_setStrength(collator_.get(), UCOL_SECONDARY);
        ucol_setAttribute(collator_.get(), UCOL_NUMERIC_COLLATION, UCOL_ON, &error);
        ucol_setAttribute(collator_.get(), UCOL_NORMALIZATION_MODE, UCOL_ON, &error);
    }
    int compare(const std::string& a, const std::string& b) const {
        UErrorCode error = U_ZERO_ERROR;
        return ucol_strcollUTF8(collator_.get(), a.data(), static_cast<int>(a.size()), b.data(),
                                static_cast<int>(b.size()), &error);
    }

private:
    std::unique_ptr<UCollator, decltype(&ucol_close)> collator_{nullptr, &ucol_close};
};

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

int sign(int number) {
    return (number > 0) - (number < 0);
}

TEST(CollationKeys, OrderTextsAsTheLibraryDoes) {
    constexpr unsigned seed = 20261121;
    for (const char* locale : {"de", "en", "sv", "cs"}) {
        std::mt19937 dice(seed);
        const PlainOrder plain(locale);
        CollationKeys keys(locale);
        for (int i = 0; i < 20000; ++i) {
            const std::string a = randomText(dice);
            const std::string b = randomText(dice);
            std::string keyA;
            std::string keyB;
            keys.append(a, keyA);
            keys.append(b, keyB);
            ASSERT_EQ(sign(keyA.compare(keyB)), sign(plain.compare(a, b)))
                << locale << " '" << a << "' '" << b << "', seed " << seed;
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
