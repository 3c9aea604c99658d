// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "cli/search_request.h"

#include <optional>
#include <string>

namespace ov::cli {

// What `ovsearch export` was asked for, as typed.
struct ExportOptions {
    std::string file; // native; its ending chooses the form
    SearchOptions search;
    std::optional<std::string> title;
    std::optional<char> separator; // of CSV; else that of the locale
    bool force = false;            // replace an existing file
};

// Searches, then writes the list. Without a hit, or after Ctrl-C, the file is as it was.
ExitCode runExport(const ExportOptions& options, const Session& session,
                   TerminalInterface& terminal);

} // namespace ov::cli
