// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/settings/profile_encoding.h"

#include <cstdint>
#include <string>
#include <string_view>

// The lines of an INI file as the profile calls understand them (platform/profile.h).

namespace ov::platform {

// Blanks, tabs, vertical tabs and form feeds.
std::string_view withoutLeadingBlanks(std::string_view text) noexcept;
std::string_view withoutBlanks(std::string_view text) noexcept;

struct ProfileLine {
    enum class Kind : std::uint8_t { blank, header, entry };

    Kind kind = Kind::blank;
    bool hasValue = false;  // an entry with a "="
    std::string_view name;  // of the section or the key, trimmed
    std::string_view value; // trimmed
};

// `text` is a line without its end.
ProfileLine parseProfileLine(std::string_view text) noexcept;

// Goes over the lines of a file. Names are compared as text, ASCII letters in any case.
class ProfileScanner {
public:
    // `content` must outlive it.
    explicit ProfileScanner(std::string_view content) noexcept : lines_(content) {}

    // False behind the last line.
    bool next();
    // Moves to the header of the first section of that name; the lines before any header are
    // the first section "".
    bool enter(std::string_view section);
    // False behind the last line of the section.
    bool nextInSection() { return next() && line_.kind != ProfileLine::Kind::header; }
    // True when the line is an entry with that key, with or without "=".
    bool isKey(std::string_view key) const;
    // Moves to the first such line of the section.
    bool findKey(std::string_view section, std::string_view key);

    // Bytes of the file, but UTF-8 where that is UTF-16; valid until the next move.
    const ProfileLine& line() const noexcept { return line_; }
    const SettingsLines& lines() const noexcept { return lines_; }

private:
    SettingsLines lines_;
    std::string text_; // the line converted from UTF-16
    ProfileLine line_;
};

} // namespace ov::platform
