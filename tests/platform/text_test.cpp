// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "platform/text.h"

#include <gtest/gtest.h>

namespace ov::platform {
namespace {

using namespace std::string_literals;

// More ASCII characters before a text than matter to a look at whole blocks.
constexpr std::size_t mostBefore = 70;

TEST(Text, ValidUtf8) {
    const std::string valid[] = {"", "a\0b"s, "\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80",
                                 "\xF4\x8F\xBF\xBF"};
    // Too large, overlong, a surrogate, a trail alone, cut, never used, Latin-1.
    const std::string broken[] = {
        "\xF4\x90\x80\x80", "\xC0\xAF", "\xE0\x80\xAF", "\xED\xA0\x80", "\x80",
        "\xE2\x82",         "\xFF",     "M\xFCller"};
    for (std::size_t count = 0; count < mostBefore; ++count) {
        for (const std::string& text : valid)
            EXPECT_TRUE(isValidUtf8(std::string(count, 'x') + text)) << text << count;
        for (const std::string& text : broken)
            EXPECT_FALSE(isValidUtf8(std::string(count, 'x') + text)) << text << count;
    }
}

TEST(Text, UpperCase) {
    const std::pair<std::string, std::string> cases[] = {
        {"az AZ 09 {}@`\0z"s, "AZ AZ 09 {}@`\0Z"s},
        {"\xC3\xA4\xC3\xB6\xC3\xBC", "\xC3\x84\xC3\x96\xC3\x9C"},  // umlauts
        {"s\u00DF\u1E9E i\u0130\u0131", "S\u00DF\u1E9E I\u0130I"}, // no letter becomes two
        {"\u00FC\u0131\u00FC\u0250", "\u00DCI\u00DC\u2C6F"},       // capitals of other lengths
        {"\u03C3\u03C2\u03AC", "\u03A3\u03A3\u0386"},              // Greek, both sigmas
        {"\xF0\x90\x90\xA8", "\xF0\x90\x90\x80"},                  // beyond the first plane
        {"a\xE4z\xC3", "A\xE4Z\xC3"},                              // no UTF-8
        {"u\u0308 e\u0300 \u03B1\u0301", "\u00DC \u00C8 \u0386"},  // decomposed
        {"s\u0323\u0307 s\u0307\u0323", "\u1E68 \u1E68"},          // two marks in either order
        {"\u1112\u1161", "\uD558"},                                // Hangul
        {"u\u0308\xE4z", "\u00DC\xE4Z"}};
    for (std::size_t count = 0; count < mostBefore; ++count)
        for (const auto& [text, expected] : cases)
            EXPECT_EQ(upperCase(std::string(count, 'x') + text),
                      std::string(count, 'X') + expected);
}

TEST(Text, Windows1252HoldsEveryByte) {
    std::string bytes;
    for (int b = 0; b < 256; ++b)
        bytes.push_back(static_cast<char>(b));
    std::string text;
    appendWindows1252(bytes, text);
    EXPECT_TRUE(isValidUtf8(text));
    EXPECT_EQ(toWindows1252(text), bytes);
    text = "kept ";
    appendWindows1252("A\x80\x81\x9F\xA0\xFF", text);
    EXPECT_EQ(text, "kept A\xE2\x82\xAC\xC2\x81\xC5\xB8\xC2\xA0\xC3\xBF");
    for (const char* missing : {"\xCE\xB1", "\xC2\x80", "\xEF\xBF\xBD", "\xF0\x9F\x98\x80"})
        EXPECT_FALSE(toWindows1252(std::string("a") + missing)) << missing;

    EXPECT_EQ(textFromBytes("\xC3\xA4"), "\xC3\xA4");
    EXPECT_EQ(textFromBytes("\xC3\xA4\xE4"), "\xC3\x83\xC2\xA4\xC3\xA4") << "all of it or none";
}

TEST(Text, Utf16) {
    const std::string lost = "\xEF\xBF\xBD";
    const std::pair<std::string, std::string> littleEndian[] = {
        {"", ""},
        {"a\0\xE4\0\xAC\x20\x3D\xD8\x00\xDE"s, "a\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80"},
        {"\x3D\xD8z\0"s, lost + "z"}, // one half of a pair, then the other
        {"\x00\xDEz\0"s, lost + "z"},
        {"\x00\xDE\x3D\xD8"s, lost + lost},
        {"a\0b"s, "a" + lost}};
    for (const auto& [bytes, text] : littleEndian)
        EXPECT_EQ(utf16ToUtf8(bytes, false), text);
    EXPECT_EQ(utf16ToUtf8("\0a\x20\xAC"s, true), "a\xE2\x82\xAC");
    EXPECT_EQ(utf8ToUtf16("a\xF0\x9F\x98\x80", true), "\0a\xD8\x3D\xDE\x00"s);
    EXPECT_EQ(utf8ToUtf16("\xE4z\uFFFF", false), "\xFD\xFFz\0\xFF\xFF"s);
}

TEST(Text, TruncationCutsBetweenCharacters) {
    const std::string text = "a\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80z";
    const std::size_t expected[] = {0, 1, 1, 3, 3, 3, 6, 6, 6, 6, 10, 11, 11, 11};
    for (std::size_t limit = 0; limit < std::size(expected); ++limit)
        EXPECT_EQ(truncateUtf8(text, limit), text.substr(0, expected[limit])) << limit;
    EXPECT_EQ(truncateUtf8("a\x80\x80\x80\x80", 1), "a") << "bytes that are no text";
    EXPECT_EQ(truncateUtf8("\x80\x80\x80\x80\x80", 4), "\x80\x80\x80\x80");
}

} // namespace
} // namespace ov::platform
