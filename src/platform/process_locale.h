// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "platform/locale.h"

#include <string>

namespace ov::platform {

// The locale that the environment names for a category, "LC_TIME": that of LC_ALL, else of the
// category, else of LANG, whether it is installed or not; "C" without any.
std::string environmentLocale(const char* category);

// What the environment says now.
Locale processLocale();

// Lets the system's own messages come in the user's language, as the environment names it. Nothing
// else of the C library's locale is set: the whole of it takes as long to load as a small program.
void useMessagesOfEnvironment() noexcept;

} // namespace ov::platform
