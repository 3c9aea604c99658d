// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "cli/commands/catalogue_command.h"
#include "platform/status.h"

#include <cstdint>
#include <string>

namespace ov::cli {

class TerminalInterface;

// `ovsearch catalogue update`, of the store at `root` (a directory text) in the catalogue at
// `place`.
ExitCode updateCatalogue(const std::string& place, const std::string& root,
                         const CatalogueOptions& options, TerminalInterface& terminal);

// How commands for catalogues speak: "1 dictation", "2 folders", a path as it may be shown.
std::string dictationsText(std::int64_t count);
std::string foldersText(std::int64_t count);
std::string shownPath(const std::string& path);
ExitCode refuse(const platform::Status& status);

} // namespace ov::cli
