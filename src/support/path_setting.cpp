// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "support/path_setting.h"

#include "platform/text.h"

#include <algorithm>
#include <charconv>

namespace ov {

namespace {

constexpr std::string_view prefix = "file://";

bool isControl(char c) noexcept {
    return static_cast<unsigned char>(c) < 0x20;
}

bool standsForItself(std::string_view path) {
    return !path.starts_with(prefix) && platform::isValidUtf8(path) &&
           std::none_of(path.begin(), path.end(), isControl);
}

bool startsWithDrive(std::string_view path) noexcept {
    return path.size() >= 2 && path[1] == ':' &&
           ((path[0] >= 'a' && path[0] <= 'z') || (path[0] >= 'A' && path[0] <= 'Z'));
}

void appendEscaped(char c, std::string& out) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    const auto byte = static_cast<unsigned char>(c);
    if (c == '\\')
        out += '/';
    else if (isControl(c) || byte > 0x7E || c == '%' || c == ':' || c == '/')
        out.append({'%', digits[byte >> 4U], digits[byte & 0xFU]});
    else
        out += c;
}

// The byte that "%E4" at the front of `text` stands for; the "%" itself when it is none.
char takeByte(std::string_view& text) {
    unsigned byte = '%';
    const char* const digits = text.data() + 1;
    const bool escaped =
        text.size() >= 3 && std::from_chars(digits, digits + 2, byte, 16).ptr == digits + 2;
    text.remove_prefix(escaped ? 3 : 1);
    return static_cast<char>(escaped ? byte : '%');
}

} // namespace

std::string settingOfPath(std::string_view path) {
    const bool hasDrive = startsWithDrive(path);
    if (standsForItself(path) || (!hasDrive && !path.starts_with('\\')))
        return std::string(path);
    std::string setting(prefix);
    if (hasDrive) {
        setting.append("/").append(path.substr(0, 2));
        path.remove_prefix(2);
    }
    for (const char c : path)
        appendEscaped(c, setting);
    return setting;
}

std::string pathOfSetting(std::string_view setting) {
    if (!setting.starts_with(std::string(prefix) + '/'))
        return std::string(setting);
    setting.remove_prefix(prefix.size());
    if (startsWithDrive(setting.substr(1)))
        setting.remove_prefix(1);
    std::string path;
    while (!setting.empty()) {
        const char c = setting.front();
        if (c == '%') {
            path += takeByte(setting);
            continue;
        }
        path += c == '/' ? '\\' : c;
        setting.remove_prefix(1);
    }
    return path;
}

} // namespace ov
