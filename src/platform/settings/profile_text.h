// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>

// The rules of the profile calls (platform/profile.h), applied to the bytes of an INI file: what
// is read. Names and values are UTF-8 here, whatever the file is written in.

namespace ov::platform {

// Without one pair of matching outer quotes.
std::string_view withoutQuotes(std::string_view value) noexcept;

// The value without its outer quotes; nothing when the file has none.
std::optional<std::string> profileValue(std::string_view content, std::string_view section,
                                        std::string_view key);

// The keys of the first section of that name that have a "=", without comments, and all named
// sections of the file; each name ended by a zero byte.
std::string profileKeys(std::string_view content, std::string_view section);
std::string profileSections(std::string_view content);

} // namespace ov::platform
