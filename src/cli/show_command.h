// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include <string>

#include "cli/exit_code.h"

namespace ov::cli {

// Prints every field of one dictation, as its name carries it and as lists show it. `file` is
// native.
ExitCode runShow(const std::string& file);

// Prints the table of fields with the operators that each offers.
ExitCode runFields();

} // namespace ov::cli
