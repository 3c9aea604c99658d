// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "cli/shown_text.h"

#include "platform/text.h"

#include <unicode/uchar.h>
#include <unicode/unistr.h>

#include <algorithm>
#include <array>
#include <cstdio>

namespace ov::cli {

namespace {

bool turnsDirection(UChar32 c) {
    return (c >= 0x202A && c <= 0x202E) || (c >= 0x2066 && c <= 0x2069) || c == 0x200E ||
           c == 0x200F || c == 0x061C;
}

std::string escapeOf(UChar32 c) {
    if (c == '\n')
        return "\\n";
    if (c == '\r')
        return "\\r";
    if (c == '\t')
        return "\\t";
    std::array<char, 16> text{};
    static_cast<void>(std::snprintf(text.data(), text.size(), "\\u%04X", static_cast<unsigned>(c)));
    return text.data();
}

std::size_t columnsOf(UChar32 c) {
    const int type = u_charType(c);
    if (type == U_NON_SPACING_MARK || type == U_ENCLOSING_MARK || type == U_FORMAT_CHAR)
        return 0;
    const int width = u_getIntPropertyValue(c, UCHAR_EAST_ASIAN_WIDTH);
    return width == U_EA_WIDE || width == U_EA_FULLWIDTH ? 2 : 1;
}

bool isPlainAscii(std::string_view text) {
    return std::ranges::all_of(text, [](char c) { return c >= ' ' && c <= '~'; });
}

template <typename Visit>
void forEachCharacter(const icu::UnicodeString& text, Visit visit) {
    for (std::int32_t i = 0; i < text.length(); i = text.moveIndex32(i, 1))
        if (!visit(text.char32At(i)))
            return;
}

void append(UChar32 c, std::string& out) {
    icu::UnicodeString(c).toUTF8String(out);
}

} // namespace

std::string shownText(std::string_view text) {
    if (isPlainAscii(text))
        return std::string(text);
    std::string shown;
    const std::string utf8 = platform::textFromBytes(text);
    forEachCharacter(icu::UnicodeString::fromUTF8(utf8), [&shown](UChar32 c) {
        if (c < 0x20 || (c >= 0x7F && c < 0xA0) || turnsDirection(c))
            shown += escapeOf(c);
        else
            append(c, shown);
        return true;
    });
    return shown;
}

std::size_t columnCount(std::string_view text) {
    if (isPlainAscii(text))
        return text.size();
    std::size_t columns = 0;
    forEachCharacter(icu::UnicodeString::fromUTF8(std::string(text)), [&columns](UChar32 c) {
        columns += columnsOf(c);
        return true;
    });
    return columns;
}

std::string fittedText(std::string_view text, std::size_t columns) {
    std::string shown = shownText(text);
    if (columnCount(shown) <= columns)
        return shown;
    std::string fitted;
    std::size_t used = 1; // the ellipsis
    forEachCharacter(icu::UnicodeString::fromUTF8(shown), [&](UChar32 c) {
        used += columnsOf(c);
        if (used <= columns)
            append(c, fitted);
        return used <= columns;
    });
    return fitted + "\xE2\x80\xA6";
}

} // namespace ov::cli
