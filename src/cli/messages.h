// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace ov::cli {

// A line on standard error that begins with the program's name. Control characters in it, which
// come from file names, are made visible.
void complain(std::string_view message);

// "1 hit", "2 hits".
std::string counted(std::int64_t count, const char* one, const char* many);

} // namespace ov::cli
