// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>

// Text encodings. Inside the program all text is UTF-8; old settings files and file names may
// hold Windows-1252, and a file may carry UTF-16.

namespace ov::platform {

// Strict: no overlong forms, no surrogates, nothing above U+10FFFF.
bool isValidUtf8(std::string_view bytes) noexcept;

// Appends `bytes` read as Windows-1252. Every byte has a character: the five that the code page
// leaves open (0x81, 0x8D, 0x8F, 0x90, 0x9D) become the control character of the same number.
void appendWindows1252(std::string_view bytes, std::string& utf8);

// `bytes` as they are when they are UTF-8, else read as Windows-1252.
std::string textFromBytes(std::string_view bytes);
void appendTextFromBytes(std::string_view bytes, std::string& out);

// Empty when a character is missing from the code page. `utf8` must be valid.
std::optional<std::string> toWindows1252(std::string_view utf8);

// UTF-16 without its byte-order mark; a lone surrogate or an odd last byte becomes U+FFFD.
std::string utf16ToUtf8(std::string_view bytes, bool bigEndian);
std::string utf8ToUtf16(std::string_view utf8, bool bigEndian);

// Without the blanks at both ends; `other` is a blank too.
constexpr std::string_view trimmed(std::string_view text, char other = '\t') noexcept {
    const auto isBlank = [other](char c) { return c == ' ' || c == other; };
    while (!text.empty() && isBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && isBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

// The longest prefix of at most `limit` bytes that does not cut a character.
std::string_view truncateUtf8(std::string_view utf8, std::size_t limit) noexcept;

// NFC: an umlaut is one character, however it was written.
std::string composed(std::string_view utf8);

// Appends `utf8` for comparing: composed (NFC), so that an umlaut is the same whether it was
// written as one character or as two, then with the Unicode simple upper-case mapping applied to
// every code point. One character stays one character: the sharp s and the dotted capital I are
// left alone, and no locale can change the result. Bytes that are not UTF-8 are copied.
void appendUpperCase(std::string_view utf8, std::string& out);
std::string upperCase(std::string_view utf8);

// Same text but for letter case, by the same rule.
bool equalsIgnoringCase(std::string_view a, std::string_view b);

} // namespace ov::platform
