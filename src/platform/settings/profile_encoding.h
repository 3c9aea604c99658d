// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

// The bytes of a settings file: what its byte-order mark says, and where its lines are. Lines are
// found in the bytes as they lie in the file, so that an editor can leave the others untouched.

namespace ov::platform {

enum class SettingsEncoding : std::uint8_t {
    plain, // no mark: UTF-8, and what is not UTF-8 is Windows-1252
    utf8,
    utf16LittleEndian,
    utf16BigEndian,
};

SettingsEncoding settingsEncoding(std::string_view bytes) noexcept;

// The bytes of the mark, 0 for plain.
std::size_t markSize(SettingsEncoding encoding) noexcept;

constexpr bool isUtf16(SettingsEncoding encoding) noexcept {
    return encoding == SettingsEncoding::utf16LittleEndian ||
           encoding == SettingsEncoding::utf16BigEndian;
}

// The whole file as UTF-8 without its mark. In a file that is neither UTF-16 nor UTF-8
// throughout, each line that is not UTF-8 is Windows-1252.
std::string settingsText(std::string_view bytes);

// Goes over the lines of a file, which end at CR, LF or both. Positions are bytes of the file.
class SettingsLines {
public:
    // Starts behind the mark; `bytes` must outlive it.
    explicit SettingsLines(std::string_view bytes) noexcept;

    // False behind the last line.
    bool next() noexcept;

    SettingsEncoding encoding() const noexcept { return encoding_; }
    // The bytes that make characters: an odd one at the end of UTF-16 is left out.
    std::size_t size() const noexcept { return bytes_.size(); }
    std::size_t begin() const noexcept { return begin_; }
    // Behind the line's end, where the next line begins.
    std::size_t end() const noexcept { return end_; }
    // The line's bytes without its end; with `untilZero` up to its first zero character.
    std::string_view bytes(bool untilZero) const noexcept;

private:
    unsigned characterAt(std::size_t at) const noexcept;

    std::string_view bytes_;
    SettingsEncoding encoding_;
    std::size_t unit_; // bytes of a character, 1 or 2
    std::size_t begin_ = 0;
    std::size_t end_;
    std::size_t zero_; // the first zero character, or textEnd_
    std::size_t textEnd_;
};

} // namespace ov::platform
