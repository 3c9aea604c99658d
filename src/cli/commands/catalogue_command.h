// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "cli/exit_code.h"

#include <cstdint>
#include <string>

namespace ov::cli {

class TerminalInterface;

enum class CatalogueAction : std::uint8_t { update, status, check, forget };

// What `ovsearch catalogue` was asked for, as typed.
struct CatalogueOptions {
    CatalogueAction action = CatalogueAction::status;
    std::string directory;    // native; empty where none was named
    std::string file = "own"; // see cataloguePlace()
    bool trustsFolderTimes = false;
    bool watches = false;
    std::int32_t interval = 600; // seconds
};

ExitCode runCatalogue(const CatalogueOptions& options, TerminalInterface& terminal);

} // namespace ov::cli
