// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "cli/exit_code.h"
#include "cli/hit_writer.h"
#include "cli/looks/looks.h"

#include <string>
#include <vector>

namespace ov::cli {

// What `ovsearch show` was asked for, as typed.
struct ShowOptions {
    std::vector<std::string> files;      // native
    HitFormat format = HitFormat::table; // or a JSON one
    LookOptions looks;
};

// Prints every field of dictations, as their names have them and as lists show them. One that
// cannot be shown keeps none of the others back.
ExitCode runShow(const ShowOptions& options);

// Prints the table of fields with the operators that each offers.
ExitCode runFields(const LookOptions& looks);

} // namespace ov::cli
