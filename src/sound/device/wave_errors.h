// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string_view>

// The words for the answers of media commands.

namespace ov::sound {

// Empty for a number that has none.
std::string_view mediaErrorText(std::uint32_t code) noexcept;

} // namespace ov::sound
