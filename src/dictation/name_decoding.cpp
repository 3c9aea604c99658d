// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "dictation/name_decoding.h"

#include <algorithm>
#include <array>

namespace ov::modDictation {

namespace {

// U+00B2 and U+00B3 share their first byte in UTF-8.
constexpr char superscriptLead = '\xC2';
constexpr char superscriptTwo = '\xB2';
constexpr char superscriptThree = '\xB3';
constexpr std::string_view superscriptTwoText = "\xC2\xB2";

// What a byte can begin in the general scheme; all others are copied.
constexpr std::array<bool, 256> makeSpecialBytes() {
    std::array<bool, 256> special{};
    for (const char c : {'~', '_', '%', '\'', '!', '$', superscriptLead})
        special[static_cast<unsigned char>(c)] = true;
    return special;
}
constexpr std::array<bool, 256> specialBytes = makeSpecialBytes();

// A sequence of the general scheme: its length in bytes and what it becomes. Length 0: none.
struct Escape {
    std::size_t length = 0;
    char becomes = '\0';
};

Escape superscriptEscape(std::string_view text) noexcept {
    const bool doubled = text.size() >= 4 && text.substr(0, 2) == text.substr(2, 2);
    if (doubled && text[1] == superscriptTwo)
        return {4, '?'};
    if (doubled && text[1] == superscriptThree)
        return {4, '<'};
    return {};
}

Escape escapeAt(std::string_view text) noexcept {
    const char second = text.size() > 1 ? text[1] : '\0';
    switch (text[0]) {
    case '~':
        return {1, '*'};
    case '_':
        return {1, '/'};
    case '\'':
        return {1, '"'};
    case '%':
        return second == '%' ? Escape{2, '>'} : Escape{};
    case '!':
        return second == '!' ? Escape{2, '.'} : Escape{};
    case '$':
        return second == '#' ? Escape{2, ':'} : Escape{};
    default:
        return superscriptEscape(text);
    }
}

// What "²" and the character become in the second scheme; 0 for characters that form no escape.
constexpr char secondSchemeCharacter(char c) noexcept {
    constexpr std::string_view becomes = "*/\\?<>\".:";
    if (c >= '1' && c <= '9')
        return becomes[static_cast<std::size_t>(c - '1')];
    return c == 'A' ? '|' : '\0';
}

} // namespace

// Decoded in place from the first special byte on: no escape is shorter than what it becomes.
void appendDecodedFieldText(std::string_view text, std::string& out) {
    const auto isSpecial = [](char c) { return specialBytes[static_cast<unsigned char>(c)]; };
    std::size_t i = 0;
    while (i < text.size() && !isSpecial(text[i]))
        ++i;
    out.append(text);
    if (i == text.size())
        return;
    char* to = out.data() + out.size() - text.size() + i;
    while (i < text.size()) {
        const Escape escape = isSpecial(text[i]) ? escapeAt(text.substr(i)) : Escape{};
        *to++ = escape.length > 0 ? escape.becomes : text[i];
        i += std::max<std::size_t>(escape.length, 1);
    }
    out.resize(static_cast<std::size_t>(to - out.data()));
}

void appendDecodedFieldText2(std::string_view text, std::string& out) {
    while (!text.empty()) {
        const std::size_t at = text.find(superscriptTwoText);
        out.append(text.substr(0, at));
        if (at == std::string_view::npos)
            return;
        text.remove_prefix(at + superscriptTwoText.size());
        if (text.starts_with('0'))
            text.remove_prefix(1);
        const char becomes = text.empty() ? '\0' : secondSchemeCharacter(text[0]);
        if (becomes == '\0') {
            out.append(superscriptTwoText);
        } else {
            out.push_back(becomes);
            text.remove_prefix(1);
        }
    }
}

std::string DecodeFieldText(std::string_view text) {
    std::string decoded;
    appendDecodedFieldText(text, decoded);
    return decoded;
}

std::string DecodeFieldText2(std::string_view text) {
    std::string decoded;
    appendDecodedFieldText2(text, decoded);
    return decoded;
}

} // namespace ov::modDictation
