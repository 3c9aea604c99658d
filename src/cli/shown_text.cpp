// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "cli/shown_text.h"

#include "export/plain_text.h"

#include <unicode/uchar.h>
#include <unicode/unistr.h>

#include <algorithm>

namespace ov::cli {

namespace {

constexpr const char* ellipsis = "\xE2\x80\xA6";

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

} // namespace

std::string shownText(std::string_view text) {
    return exporting::plainText(text, exporting::Gaps::escaped);
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

std::size_t bytesWithin(std::string_view text, std::size_t columns) {
    std::size_t bytes = 0;
    std::size_t used = 0;
    forEachCharacter(icu::UnicodeString::fromUTF8(std::string(text)), [&](UChar32 c) {
        used += columnsOf(c);
        if (used <= columns)
            bytes += static_cast<std::size_t>(U8_LENGTH(c));
        return used <= columns;
    });
    return bytes;
}

std::string fittedText(std::string_view text, std::size_t columns) {
    std::string shown = shownText(text);
    if (columnCount(shown) <= columns)
        return shown;
    shown.resize(bytesWithin(shown, columns - std::min<std::size_t>(columns, 1)));
    return shown + ellipsis;
}

} // namespace ov::cli
