// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "cli/looks/looks.h"
#include "cli/options/option_kinds.h"

// The options that say how a table looks on a terminal.

namespace ov::cli {

void addColorAndPager(CLI::App& command, LookOptions& looks);
void addHyperlinks(CLI::App& command, LookOptions& looks);

} // namespace ov::cli
