// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "platform/settings/profile_scanner.h"

#include "platform/text.h"

#include <algorithm>

namespace ov::platform {

namespace {

constexpr std::string_view blanks = " \t\v\f";

char asciiLower(char c) noexcept {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool equalInAscii(std::string_view a, std::string_view b) noexcept {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return asciiLower(x) == asciiLower(y); });
}

// `stored` are the bytes of a line, `wanted` is text.
bool sameName(std::string_view stored, std::string_view wanted) {
    return equalInAscii(stored, wanted) ||
           (!isValidUtf8(stored) && equalInAscii(textFromBytes(stored), wanted));
}

} // namespace

std::string_view withoutLeadingBlanks(std::string_view text) noexcept {
    return text.substr(std::min(text.find_first_not_of(blanks), text.size()));
}

std::string_view withoutBlanks(std::string_view text) noexcept {
    return withoutLeadingBlanks(text.substr(0, text.find_last_not_of(blanks) + 1));
}

ProfileLine parseProfileLine(std::string_view text) noexcept {
    ProfileLine line;
    text = withoutBlanks(text);
    if (text.empty())
        return line;
    if (const std::size_t close = text.rfind(']');
        text.front() == '[' && close != std::string_view::npos) {
        line.kind = ProfileLine::Kind::header;
        line.name = withoutBlanks(text.substr(1, close - 1));
        return line;
    }
    const std::size_t equals = text.find('=');
    line.kind = ProfileLine::Kind::entry;
    line.hasValue = equals != std::string_view::npos;
    line.name = withoutBlanks(text.substr(0, equals));
    if (line.hasValue)
        line.value = withoutBlanks(text.substr(equals + 1));
    return line;
}

bool ProfileScanner::next() {
    if (!lines_.next())
        return false;
    std::string_view text = lines_.bytes(true);
    if (isUtf16(lines_.encoding())) {
        text_ = utf16ToUtf8(text, lines_.encoding() == SettingsEncoding::utf16BigEndian);
        text = text_;
    }
    line_ = parseProfileLine(text);
    return true;
}

bool ProfileScanner::enter(std::string_view section) {
    if (section.empty())
        return true;
    while (next())
        if (line_.kind == ProfileLine::Kind::header && sameName(line_.name, section))
            return true;
    return false;
}

bool ProfileScanner::isKey(std::string_view key) const {
    return line_.kind == ProfileLine::Kind::entry && sameName(line_.name, key);
}

bool ProfileScanner::findKey(std::string_view section, std::string_view key) {
    if (!enter(section))
        return false;
    while (nextInSection())
        if (isKey(key))
            return true;
    return false;
}

} // namespace ov::platform
