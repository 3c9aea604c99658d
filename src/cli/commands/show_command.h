// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "cli/exit_code.h"
#include "cli/looks/looks.h"

#include <string>
#include <vector>

namespace ov::cli {

// Prints every field of dictations, as the name has it and as lists show it, each below its file
// when there are several. What cannot be shown is told, and the others are shown all the same.
// `files` are native.
ExitCode runShow(const std::vector<std::string>& files, const LookOptions& looks);

// Prints the table of fields with the operators that each offers.
ExitCode runFields(const LookOptions& looks);

} // namespace ov::cli
