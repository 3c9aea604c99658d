// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "cli/commands/export_command.h"
#include "cli/commands/find_command.h"
#include "cli/options/option_kinds.h"

// The commands that search, with their options.

namespace ov::cli {

CLI::App* addFind(CLI::App& app, FindOptions& options);
CLI::App* addExport(CLI::App& app, ExportOptions& options);

} // namespace ov::cli
