// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/registry.h"

#include <string>
#include <string_view>
#include <vector>

// Reading the registry. Nothing here raises: what cannot be opened or read is the default, and an
// error other than a missing key or value is reported to the log under the procedure's name.

namespace ov::modRegistry {

using platform::RegistryHive;

// A text value up to its first zero, a 32-bit number as signed decimal text. The default for a
// missing value, one of another type and one of more than 1024 bytes.
std::string RegistryGetValueEx(RegistryHive hive, std::string_view key, std::string_view name,
                               std::string_view defaultValue);

// True when the numeric value of the text is not zero.
bool RegistryGetBoolean(RegistryHive hive, std::string_view key, std::string_view name,
                        bool defaultValue);

// The value with a trailing "\"; without `allowMissing` empty when there is no such directory.
std::string RegistryGetPath(RegistryHive hive, std::string_view key, std::string_view name,
                            std::string_view defaultValue, bool allowMissing);

// "AppData", "Common AppData" and their like, ending in "\"; empty when the value is missing.
std::string GetShellFolder(std::string_view name);

// The keys right below a key, as `key` + "\" + name and as names alone; none when it is missing.
std::vector<std::string> REGReadSubKeys(RegistryHive hive, std::string_view key);
std::vector<std::string> REGReadSubKeyNames(RegistryHive hive, std::string_view key);

} // namespace ov::modRegistry
