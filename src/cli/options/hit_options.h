// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "cli/commands/find_command.h"
#include "cli/options/option_kinds.h"

namespace ov::cli {

// The options of `find` that say what becomes of the hits, besides how they are printed.
void addHitOptions(CLI::App& command, FindOptions& options);

} // namespace ov::cli
