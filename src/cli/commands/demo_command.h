// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "cli/exit_code.h"

#include <cstdint>
#include <string>

namespace ov::cli {

class TerminalInterface;

// Writes a demo store into the native directory `directory`, which must be missing or empty.
ExitCode runDemo(const std::string& directory, int count, std::uint32_t seed,
                 TerminalInterface& terminal);

} // namespace ov::cli
