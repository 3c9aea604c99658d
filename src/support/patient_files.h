// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/files.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

// Those of platform/files.h for the thread of the user interface and what may lie on a file server:
// each answers within a second, see patiently() in platform/threads/errand.h. What has no answer
// fails with the status of noAnswer(); a change that was asked for may still be made, later.

namespace ov::patient {

// Nothing when there is no answer.
std::optional<platform::FileKind> fileKind(std::string_view path);
bool fileExists(std::string_view path);
bool directoryExists(std::string_view path);

platform::Status createDirectory(std::string_view path, platform::Access access);
platform::Status createDirectories(std::string_view directory, platform::Access access);
platform::Status removeFile(std::string_view path);
platform::Status readFile(std::string_view path, std::string& content,
                          std::uint64_t limit = platform::defaultReadLimit);
platform::Status replaceFile(std::string_view path, std::string content, platform::Access access);
platform::Status appendToFile(std::string_view path, std::string content, platform::Access access);

} // namespace ov::patient
