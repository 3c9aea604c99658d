// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "cli/commands/show_command.h"
#include "cli/options/option_kinds.h"

namespace ov::cli {

CLI::App* addShow(CLI::App& app, ShowOptions& options);

} // namespace ov::cli
