// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "cli/commands/catalogue_command.h"
#include "cli/options/option_kinds.h"

namespace ov::cli {

CLI::App* addCatalogue(CLI::App& app, CatalogueOptions& options);

} // namespace ov::cli
