// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "export/plain_text.h"

#include "platform/text.h"

#include <unicode/unistr.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>

namespace ov::exporting {

namespace {

bool turnsDirection(UChar32 c) {
    return (c >= 0x202A && c <= 0x202E) || (c >= 0x2066 && c <= 0x2069) || c == 0x200E ||
           c == 0x200F || c == 0x061C;
}

bool isGap(UChar32 c) {
    return (c >= '\t' && c <= '\r') || c == 0x85 || c == 0x2028 || c == 0x2029;
}

bool isObeyed(UChar32 c) {
    return c < ' ' || (c >= 0x7F && c < 0xA0) || c == 0x2028 || c == 0x2029 || turnsDirection(c);
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

} // namespace

std::string plainText(std::string_view text, Gaps gaps) {
    if (std::ranges::all_of(text, [](char c) { return c >= ' ' && c <= '~'; }))
        return std::string(text);
    const auto characters = icu::UnicodeString::fromUTF8(platform::textFromBytes(text));
    std::string plain;
    for (std::int32_t i = 0; i < characters.length(); i = characters.moveIndex32(i, 1)) {
        const UChar32 c = characters.char32At(i);
        if (!isObeyed(c))
            icu::UnicodeString(c).toUTF8String(plain);
        else if (gaps == Gaps::blank && isGap(c))
            plain.push_back(' ');
        else
            plain.append(escapeOf(c));
    }
    return plain;
}

} // namespace ov::exporting
