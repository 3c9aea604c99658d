// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "platform/text.h"

#include <unicode/bytestream.h>
#include <unicode/normalizer2.h>
#include <unicode/uchar.h>
#include <unicode/utf16.h>
#include <unicode/utf8.h>

#include <array>
#include <cstdint>
#include <new>

namespace ov::platform {

namespace {

// What 0x80 to 0x9F stand for in Windows-1252; the rest of the code page equals Latin-1.
constexpr std::array<char16_t, 32> windows1252High = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

constexpr UChar32 replacementCharacter = 0xFFFD;

// ICU's macro narrows on purpose.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wconversion"
// The character at `i`, which moves behind it; negative for bytes that are no UTF-8.
UChar32 nextCodePoint(std::string_view utf8, std::size_t& i) noexcept {
    UChar32 c = 0;
    U8_NEXT(utf8, i, utf8.size(), c);
    return c;
}
#pragma GCC diagnostic pop

// Returns its length.
std::size_t writeCodePoint(UChar32 c, char* to) noexcept {
    std::size_t length = 0;
    U8_APPEND_UNSAFE(to, length, c);
    return length;
}

void appendCodePoint(UChar32 c, std::string& out) {
    std::array<char, U8_MAX_LENGTH> bytes{};
    out.append(bytes.data(), writeCodePoint(c, bytes.data()));
}

std::optional<unsigned char> windows1252Byte(UChar32 c) {
    if (c < 0x80 || (c >= 0xA0 && c <= 0xFF))
        return static_cast<unsigned char>(c);
    for (std::size_t i = 0; i < windows1252High.size(); ++i)
        if (windows1252High[i] == c)
            return static_cast<unsigned char>(0x80 + i);
    return std::nullopt;
}

// The number of bytes at the start that are ASCII. Blocks have no way out of their loop, so that
// the compiler looks at all bytes at once.
std::size_t asciiPrefix(std::string_view bytes) noexcept {
    constexpr std::size_t blockSize = 32;
    std::size_t at = 0;
    for (; at + blockSize <= bytes.size(); at += blockSize) {
        unsigned char together = 0;
        for (std::size_t i = 0; i < blockSize; ++i)
            together |= static_cast<unsigned char>(bytes[at + i]);
        if (together >= 0x80)
            break;
    }
    while (at < bytes.size() && static_cast<unsigned char>(bytes[at]) < 0x80)
        ++at;
    return at;
}

char asciiUpper(char c) noexcept {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - ('a' - 'A')) : c;
}

constexpr UChar32 firstMark = 0x300; // below it nothing is composed

// Composing could change what is around the character.
bool mayCompose(UChar32 c) noexcept {
    return c >= firstMark && (u_getIntPropertyValue(c, UCHAR_NFC_QUICK_CHECK) != UNORM_YES ||
                              u_getCombiningClass(c) != 0);
}

enum class Composed { certainly, unknown };

// False, with part of the text appended, for a text that may have to be composed first.
template <Composed composed>
bool appendUpper(std::string_view utf8, std::string& out) {
    while (!utf8.empty()) {
        const std::size_t ascii = asciiPrefix(utf8);
        const std::size_t start = out.size();
        out.append(utf8.substr(0, ascii));
        for (std::size_t i = start; i < out.size(); ++i)
            out[i] = asciiUpper(out[i]);
        utf8.remove_prefix(ascii);
        if (utf8.empty())
            break;
        std::size_t length = 0;
        const UChar32 c = nextCodePoint(utf8, length);
        if (composed == Composed::unknown && mayCompose(c))
            return false;
        if (c < 0)
            out.append(utf8.substr(0, length));
        else
            appendCodePoint(u_toupper(c), out);
        utf8.remove_prefix(length);
    }
    return true;
}

// Of the characters that nearly all names are made of.
UChar32 commonUpper(UChar32 c) noexcept {
    static const auto capitals = [] {
        std::array<char16_t, firstMark> table{};
        for (std::size_t i = 0; i < table.size(); ++i)
            table[i] = static_cast<char16_t>(u_toupper(static_cast<UChar32>(i)));
        return table;
    }();
    return capitals[static_cast<std::size_t>(c)];
}

// For a text of common characters whose capitals are as long as they are, as nearly all texts are.
// False, with part of it changed, for any other. The first loop has no way out, so that the
// compiler takes many bytes at once.
bool makeCommonUpper(char* text, std::size_t size) noexcept {
    unsigned char together = 0;
    for (std::size_t i = 0; i < size; ++i) {
        together |= static_cast<unsigned char>(text[i]);
        text[i] = asciiUpper(text[i]);
    }
    for (std::size_t i = 0; together >= 0x80 && i < size;) {
        const std::size_t begin = i;
        const UChar32 c = nextCodePoint({text, size}, i);
        if (c >= 0 && c < 0x80)
            continue;
        if (c < 0 || c >= firstMark)
            return false;
        const UChar32 capital = commonUpper(c);
        if (U8_LENGTH(capital) != U8_LENGTH(c))
            return false;
        writeCodePoint(capital, text + begin);
    }
    return true;
}

// Takes whole characters from the normaliser, some at a time.
class UpperCaseSink final : public icu::ByteSink {
public:
    explicit UpperCaseSink(std::string& out) : out_(out) {}
    void Append(const char* bytes, std::int32_t size) override {
        appendUpper<Composed::certainly>({bytes, static_cast<std::size_t>(size)}, out_);
    }

private:
    std::string& out_;
};

void normalize(std::string_view utf8, icu::ByteSink& sink) {
    UErrorCode error = U_ZERO_ERROR;
    const icu::StringPiece text(utf8.data(), static_cast<std::int32_t>(utf8.size()));
    if (const auto* nfc = icu::Normalizer2::getNFCInstance(error); U_SUCCESS(error))
        nfc->normalizeUTF8(0, text, sink, nullptr, error);
    if (U_FAILURE(error)) // its data are built in: only memory can be missing
        throw std::bad_alloc();
}

} // namespace

bool isValidUtf8(std::string_view bytes) noexcept {
    std::size_t i = asciiPrefix(bytes);
    while (i < bytes.size()) {
        if (nextCodePoint(bytes, i) < 0)
            return false;
        i += asciiPrefix(bytes.substr(i));
    }
    return true;
}

void appendWindows1252(std::string_view bytes, std::string& utf8) {
    for (const char byte : bytes) {
        const auto b = static_cast<unsigned char>(byte);
        appendCodePoint(b >= 0x80 && b < 0xA0 ? windows1252High[b - 0x80U] : b, utf8);
    }
}

std::string textFromBytes(std::string_view bytes) {
    std::string text;
    appendTextFromBytes(bytes, text);
    return text;
}

void appendTextFromBytes(std::string_view bytes, std::string& out) {
    if (isValidUtf8(bytes))
        out.append(bytes);
    else
        appendWindows1252(bytes, out);
}

std::optional<std::string> toWindows1252(std::string_view utf8) {
    std::string bytes;
    bytes.reserve(utf8.size());
    for (std::size_t i = 0; i < utf8.size();) {
        const UChar32 c = nextCodePoint(utf8, i);
        const auto byte = windows1252Byte(c);
        if (c < 0 || !byte)
            return std::nullopt;
        bytes.push_back(static_cast<char>(*byte));
    }
    return bytes;
}

std::string utf16ToUtf8(std::string_view bytes, bool bigEndian) {
    std::u16string units;
    units.reserve(bytes.size() / 2 + 1);
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        const auto first = static_cast<unsigned char>(bytes[i]);
        const auto second = static_cast<unsigned char>(bytes[i + 1]);
        units.push_back(
            static_cast<char16_t>(bigEndian ? (first << 8) | second : (second << 8) | first));
    }
    if (bytes.size() % 2 != 0)
        units.push_back(replacementCharacter);
    std::string utf8;
    utf8.reserve(units.size());
    for (std::size_t i = 0; i < units.size();) {
        UChar32 c = 0;
        U16_NEXT(units, i, units.size(), c);
        appendCodePoint(U_IS_SURROGATE(c) ? replacementCharacter : c, utf8);
    }
    return utf8;
}

std::string utf8ToUtf16(std::string_view utf8, bool bigEndian) {
    std::string bytes;
    bytes.reserve(utf8.size() * 2);
    const auto put = [&bytes, bigEndian](unsigned unit) {
        const auto high = static_cast<char>(unit >> 8U);
        const auto low = static_cast<char>(unit & 0xFFU);
        bytes.push_back(bigEndian ? high : low);
        bytes.push_back(bigEndian ? low : high);
    };
    for (std::size_t i = 0; i < utf8.size();) {
        UChar32 c = nextCodePoint(utf8, i);
        if (c < 0)
            c = replacementCharacter;
        if (U16_LENGTH(c) == 2) {
            put(static_cast<unsigned>(U16_LEAD(c)));
            put(static_cast<unsigned>(U16_TRAIL(c)));
        } else {
            put(static_cast<unsigned>(c));
        }
    }
    return bytes;
}

std::string_view truncateUtf8(std::string_view utf8, std::size_t limit) noexcept {
    if (utf8.size() <= limit)
        return utf8;
    if (U8_IS_TRAIL(static_cast<std::uint8_t>(utf8[limit])))
        U8_TRUNCATE_IF_INCOMPLETE(utf8, 0, limit);
    return utf8.substr(0, limit);
}

std::string composed(std::string_view utf8) {
    std::string text;
    icu::StringByteSink<std::string> sink(&text);
    normalize(utf8, sink);
    return text;
}

void appendUpperCase(std::string_view utf8, std::string& out) {
    const std::size_t start = out.size();
    out.append(utf8);
    if (makeCommonUpper(out.data() + start, utf8.size()))
        return;
    out.resize(start);
    if (appendUpper<Composed::unknown>(utf8, out))
        return;
    out.resize(start);
    UpperCaseSink sink(out);
    normalize(utf8, sink);
}

std::string upperCase(std::string_view utf8) {
    std::string upper;
    upper.reserve(utf8.size());
    appendUpperCase(utf8, upper);
    return upper;
}

bool equalsIgnoringCase(std::string_view a, std::string_view b) {
    return upperCase(a) == upperCase(b);
}

} // namespace ov::platform
