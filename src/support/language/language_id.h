// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

// The languages that the program knows, by the primary language numbers of language files.

namespace ov::language_id {

constexpr std::int32_t none = 0; // the host has named none: German
constexpr std::int32_t german = 7;
constexpr std::int32_t english = 9;

constexpr bool isGerman(std::int32_t language) noexcept {
    return language == none || language == german;
}

} // namespace ov::language_id
