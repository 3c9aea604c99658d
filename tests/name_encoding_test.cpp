// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "dictation/name_encoding.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace ov::modDictation {
namespace {

TEST(NameEncoding, WritesWhatReadsBack) {
    struct Case {
        const char* what;
        std::string_view text;
        std::optional<std::string> general;
        std::optional<std::string> second;
    };
    for (const Case& c : std::vector<Case>{
             {"plain with umlauts", "Öztürk ß 7", "Öztürk ß 7", "Öztürk ß 7"},
             {"all that a file name cannot hold", "*/?<>\".:", "~_²²³³%%'!!$#", "²1²2²4²5²6²7²8²9"},
             {"backslash and bar", "a\\b|c", std::nullopt, "a²3b²Ac"},
             {"lone escape halves", "²a³%!$", "²a³%!$", "²0a³%!$"},
             {"literal pair", "a!!b", std::nullopt, "a!!b"},
             {"half behind an escape", "?²", "²²²", "²4²0"},
             {"superscript before a digit", "m²1", "m²1", std::nullopt},
             {"field separator", "a@@5$HOCH", std::nullopt, std::nullopt},
             {"would join the next separator", "a@", std::nullopt, std::nullopt},
             {"line end", "a\nb", std::nullopt, std::nullopt},
             {"not UTF-8", "M\xFCller", std::nullopt, std::nullopt},
         }) {
        EXPECT_EQ(encodeFieldText(c.text), c.general) << c.what;
        EXPECT_EQ(encodeFieldText2(c.text), c.second) << c.what;
    }
}

TEST(NameBuilder, RefusesAndStaysAsItWas) {
    DictationNameBuilder name(20);
    EXPECT_EQ(name.name(), "2$");
    EXPECT_TRUE(name.add(5, "HOCH"));
    EXPECT_TRUE(name.add(2, "ROH"));
    EXPECT_FALSE(name.add(5, "MSG")) << "there already";
    EXPECT_FALSE(name.add(2, "MAI")) << "there already";
    EXPECT_FALSE(name.add(-1, "x")) << "no field of a name";
    EXPECT_FALSE(name.add(0, "x")) << "no field of a name";
    EXPECT_FALSE(name.add(7, "a_b")) << "cannot be written";
    EXPECT_FALSE(name.add(8, "1234")) << "21 bytes";
    EXPECT_TRUE(name.add(8, "123")) << "20 bytes";
    EXPECT_EQ(name.name(), "2$ROH@@5$HOCH@@8$123");
}

} // namespace
} // namespace ov::modDictation
