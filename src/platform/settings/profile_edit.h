// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

// The rules of the profile calls (platform/profile.h), applied to the bytes of an INI file: what
// is written. Names and values are UTF-8 here, whatever the file is written in.

namespace ov::platform {

enum class ProfileEdit : std::uint8_t {
    unchanged, // the content says so already
    changed,
    refused, // the content is as it was: the edit would have damaged it
};

// Refused: a line end or a zero byte in any argument, a key or section that would not be read
// back as such from the line written, and whatever would make a plain file look as if it began
// with a byte-order mark.
ProfileEdit setProfileValue(std::string& content, std::string_view section, std::string_view key,
                            std::string_view value);
// Removes the line that is read for this key; a later one of the same name then counts.
ProfileEdit removeProfileKey(std::string& content, std::string_view section, std::string_view key);
// Removes the first section of that name with its comments.
ProfileEdit removeProfileSection(std::string& content, std::string_view section);

} // namespace ov::platform
