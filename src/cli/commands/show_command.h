// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "cli/exit_code.h"

#include <string>

namespace ov::cli {

// Prints every field of one dictation, as its name has it and as lists show it. `file` is native.
ExitCode runShow(const std::string& file);

// Prints the table of fields with the operators that each offers.
ExitCode runFields();

} // namespace ov::cli
