// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "platform/text.h"

#include <gtest/gtest.h>

#include <random>

namespace ov::platform {
namespace {

using namespace std::string_literals;

// Long enough that a fault in the blockwise look at ASCII would show at any offset.
std::string behindAscii(std::size_t count, std::string_view text) {
    return std::string(count, 'x').append(text);
}

TEST(Text, ValidUtf8) {
    const struct {
        const char* name;
        std::string bytes;
        bool expected;
    } cases[] = {
        {"empty", "", true},
        {"zero byte", "a\0b"s, true},
        {"two, three and four bytes", "\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80", true},
        {"last code point", "\xF4\x8F\xBF\xBF", true},
        {"beyond the last", "\xF4\x90\x80\x80", false},
        {"overlong slash", "\xC0\xAF", false},
        {"overlong, three bytes", "\xE0\x80\xAF", false},
        {"surrogate", "\xED\xA0\x80", false},
        {"trail alone", "\x80", false},
        {"cut", "\xE2\x82", false},
        {"byte that never occurs", "\xFF", false},
        {"Latin-1", "M\xFCller", false},
    };
    for (const auto& tested : cases)
        for (std::size_t before = 0; before < 70; ++before)
            EXPECT_EQ(isValidUtf8(behindAscii(before, tested.bytes)), tested.expected)
                << tested.name << " behind " << before;
}

TEST(Text, UpperCase) {
    const struct {
        const char* name;
        std::string text;
        std::string expected;
    } cases[] = {
        {"ASCII", "az AZ 09 {}@`", "AZ AZ 09 {}@`"},
        {"umlauts", "\xC3\xA4\xC3\xB6\xC3\xBC", "\xC3\x84\xC3\x96\xC3\x9C"},
        {"sharp s stays one character",
         "stra\xC3\x9F"
         "e",
         "STRA\xC3\x9F"
         "E"},
        {"capital sharp s", "\xE1\xBA\x9E", "\xE1\xBA\x9E"},
        {"dotted i", "i\xC4\xB0", "I\xC4\xB0"},
        {"dotless i", "\xC4\xB1", "I"},
        {"Greek, both sigmas", "\xCF\x83\xCF\x82\xCE\xAC", "\xCE\xA3\xCE\xA3\xCE\x86"},
        {"y with dots grows to another page", "\xC3\xBF", "\xC5\xB8"},
        {"ligature stays", "\xEF\xAC\x81", "\xEF\xAC\x81"},
        {"beyond the first plane", "\xF0\x90\x90\xA8", "\xF0\x90\x90\x80"},
        {"bytes that are no text",
         "a\xE4"
         "b\xC3",
         "A\xE4"
         "B\xC3"},
        {"zero byte", "a\0b"s, "A\0B"s},
    };
    for (const auto& tested : cases)
        for (std::size_t before = 0; before < 70; ++before)
            EXPECT_EQ(upperCase(behindAscii(before, tested.text)),
                      std::string(before, 'X') + tested.expected)
                << tested.name << " behind " << before;
    std::string text = "kept ";
    appendUpperCase("\xC3\xA4", text);
    EXPECT_EQ(text, "kept \xC3\x84");
    EXPECT_TRUE(equalsIgnoringCase("M\xC3\xBCller", "m\xC3\x9CLLER"));
    EXPECT_FALSE(equalsIgnoringCase("Muller", "M\xC3\xBCller"));
    EXPECT_FALSE(equalsIgnoringCase("ss", "\xC3\x9F"));
}

TEST(Text, Windows1252HoldsEveryByte) {
    std::string bytes;
    for (int b = 0; b < 256; ++b)
        bytes.push_back(static_cast<char>(b));
    std::string text;
    appendWindows1252(bytes, text);
    EXPECT_TRUE(isValidUtf8(text));
    EXPECT_EQ(toWindows1252(text), bytes);

    const std::pair<char, const char*> cases[] = {
        {'A', "A"},           {'\x80', "\xE2\x82\xAC"}, {'\x81', "\xC2\x81"},
        {'\x9F', "\xC5\xB8"}, {'\xA0', "\xC2\xA0"},     {'\xFF', "\xC3\xBF"},
    };
    for (const auto& [byte, expected] : cases) {
        std::string one = "kept";
        appendWindows1252({&byte, 1}, one);
        EXPECT_EQ(one, std::string("kept") + expected);
    }
    for (const char* missing : {"\xCE\xB1", "\xC2\x80", "\xEF\xBF\xBD", "\xF0\x9F\x98\x80"})
        EXPECT_FALSE(toWindows1252(std::string("a") + missing)) << missing;
}

TEST(Text, BytesAreUtf8OrElseWindows1252) {
    EXPECT_EQ(textFromBytes("\xC3\xA4"), "\xC3\xA4");
    EXPECT_EQ(textFromBytes("\xE4"), "\xC3\xA4");
    EXPECT_EQ(textFromBytes("\xC3\xA4\xE4"), "\xC3\x83\xC2\xA4\xC3\xA4") << "all of it or none";
}

TEST(Text, Utf16) {
    const struct {
        const char* name;
        std::string bytes;
        std::string expected;
        bool bigEndian;
    } cases[] = {
        {"empty", "", "", false},
        {"little-endian", "a\0\xE4\0\xAC\x20"s, "a\xC3\xA4\xE2\x82\xAC", false},
        {"big-endian", "\0a\0\xE4\x20\xAC"s, "a\xC3\xA4\xE2\x82\xAC", true},
        {"pair of surrogates", "\x3D\xD8\x00\xDE"s, "\xF0\x9F\x98\x80", false},
        {"first half alone",
         "\x3D\xD8"
         "a\0"s,
         "\xEF\xBF\xBD"
         "a",
         false},
        {"second half alone",
         "\x00\xDE"
         "a\0"s,
         "\xEF\xBF\xBD"
         "a",
         false},
        {"first half at the end", "a\0\x3D\xD8"s, "a\xEF\xBF\xBD", false},
        {"halves the wrong way round", "\x00\xDE\x3D\xD8"s, "\xEF\xBF\xBD\xEF\xBF\xBD", false},
        {"odd last byte", "a\0b"s, "a\xEF\xBF\xBD", false},
        {"one byte", "\xFF", "\xEF\xBF\xBD", true},
    };
    for (const auto& tested : cases)
        EXPECT_EQ(utf16ToUtf8(tested.bytes, tested.bigEndian), tested.expected) << tested.name;

    const std::string text = "a\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80\xEF\xBF\xBF"s;
    for (const bool bigEndian : {false, true})
        EXPECT_EQ(utf16ToUtf8(utf8ToUtf16(text, bigEndian), bigEndian), text);
    EXPECT_EQ(utf8ToUtf16("a\xF0\x9F\x98\x80", true), "\0a\xD8\x3D\xDE\x00"s);
    EXPECT_EQ(utf8ToUtf16("\xE4"
                          "a",
                          false),
              "\xFD\xFF"
              "a\0"s);
}

TEST(Text, TruncationCutsBetweenCharacters) {
    const std::string text = "a\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80z";
    const std::size_t expected[] = {0, 1, 1, 3, 3, 3, 6, 6, 6, 6, 10, 11, 11, 11};
    for (std::size_t limit = 0; limit < std::size(expected); ++limit)
        EXPECT_EQ(truncateUtf8(text, limit), text.substr(0, expected[limit])) << limit;
    EXPECT_EQ(truncateUtf8("a\x80\x80\x80\x80", 1), "a") << "bytes that are no text";
    EXPECT_EQ(truncateUtf8("\x80\x80\x80\x80\x80", 4), "\x80\x80\x80\x80");
}

// What any bytes do: nothing is read past the end (the sanitizers watch), and the results are
// text again.
TEST(Text, AnyBytes) {
    constexpr unsigned seed = 4711;
    std::mt19937 random(seed);
    for (int round = 0; round < 2000; ++round) {
        std::string bytes(random() % 48, '\0');
        for (char& b : bytes)
            b = static_cast<char>(random() % 3 == 0 ? random() % 128 : random() % 256);
        SCOPED_TRACE(::testing::PrintToString(bytes));
        const std::string upper = upperCase(bytes);
        EXPECT_EQ(isValidUtf8(upper), isValidUtf8(bytes));
        EXPECT_TRUE(isValidUtf8(textFromBytes(bytes)));
        EXPECT_TRUE(isValidUtf8(utf16ToUtf8(bytes, round % 2 == 0)));
        EXPECT_LE(truncateUtf8(bytes, bytes.size() / 2).size(), bytes.size() / 2);
        EXPECT_GE(truncateUtf8(bytes, bytes.size() / 2).size() + 3, bytes.size() / 2);
    }
}

} // namespace
} // namespace ov::platform
