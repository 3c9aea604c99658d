// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "cli/looks/file_link.h"

#include "platform/terminal/terminal.h"

namespace ov::cli {

namespace {

bool isPlain(char c) noexcept {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
           std::string_view("/-._~").find(c) != std::string_view::npos;
}

std::string percentEncoded(std::string_view bytes) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string encoded;
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        if (isPlain(c))
            encoded.push_back(c);
        else
            encoded.append(1, '%').append(1, digits[byte >> 4U]).append(1, digits[byte & 15U]);
    }
    return encoded;
}

} // namespace

// The host's name tells a terminal whose files these are when the program runs elsewhere.
std::string fileLink(std::string_view text, std::string_view nativePath) {
    constexpr std::string_view begin = "\x1B]8;;";
    constexpr std::string_view end = "\x1B\\";
    static const std::string host = percentEncoded(platform::hostName());
    std::string link;
    return link.append(begin)
        .append("file://" + host + percentEncoded(nativePath))
        .append(end)
        .append(text)
        .append(begin)
        .append(end);
}

} // namespace ov::cli
