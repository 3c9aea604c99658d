// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/status.h"

#include <string>
#include <string_view>

namespace ov::platform {

// Loads a part of the program that is a file of its own, for good, and finds a function in it:
// nullptr and why not in `status` when that fails. `path` as everywhere.
void* functionOfModule(std::string_view path, const char* function, Status& status);

// How this system's modules are called: "libx.so" for "x".
std::string moduleFileName(std::string_view name);

} // namespace ov::platform
