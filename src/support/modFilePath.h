// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

// The directories of the control, by number.

namespace ov::modFilePath {

// Stored in callers' code and in the host's; the numbers are fixed.
namespace directory_id {
constexpr std::int32_t module = 1;  // where the control's file was loaded from
constexpr std::int32_t perUser = 2; // per-user application data + "Orvanta\"
constexpr std::int32_t common = 3;  // common application data + "Orvanta\"
constexpr std::int32_t log = 10;
constexpr std::int32_t plugIns = 11;
constexpr std::int32_t languages = 12;
constexpr std::int32_t hostSettings = 32; // per-user data of the search plug-in
constexpr std::int32_t network = 100;
constexpr std::int32_t networkBase = 200;
constexpr std::int32_t dictationTree = 204;
} // namespace directory_id

// The directory of that number, ending in "\"; empty for an unknown number, for a child of an
// empty parent, and when `create` is set but the directory could not be created.
std::string GetDirectory(std::int32_t id, bool create = false);

// For directory 204 writes the dictation root to "OVSearch.cfg"; any other number is kept for
// this thread (2 moves everything that lies below the per-user folder).
void SetDirectory(std::int32_t id, std::string_view path);

// Creates the directory with all missing parents, logging each level once the log directory
// exists. Those of the user's own settings and logs are the user's alone. A drive that is not there
// is reported; false then, or when a level fails.
bool EnsureDirectory(std::string_view path);

// Appends "\" unless the text is empty or ends in one.
std::string AddBackslash(std::string_view path);

// The part of a path up to and with its last "\", and what stands behind it.
std::string_view directoryPart(std::string_view path) noexcept;
std::string_view namePart(std::string_view path) noexcept;

// For tests: forgets what SetDirectory stored.
void reset();

} // namespace ov::modFilePath
