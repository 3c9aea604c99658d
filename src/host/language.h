// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>

namespace ov::host {

// A language of the user interface. The numbers are those of "PI_GetLanguage" and lie in the
// settings file.
enum class Language : std::int32_t { german = 7, english = 9 };

} // namespace ov::host
