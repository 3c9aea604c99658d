// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "cli/exit_code.h"
#include "cli/hit_writer.h"
#include "cli/hits/command_template.h"
#include "cli/search_request.h"

#include <optional>
#include <string>
#include <vector>

namespace ov::cli {

// What `ovsearch find` was asked for, as typed.
struct FindOptions {
    SearchOptions search;
    std::vector<std::string> criteriaFiles; // native; a search for each, or one without any
    std::optional<HitFormat> format;        // else a table, or paths that end by a zero byte
    std::optional<char> separator;          // of CSV
    bool raw = false;                       // likewise
    bool zeroEnded = false;
    LookOptions looks;
    // What becomes of the hits instead.
    bool count = false;
    std::optional<std::string> countBy; // KEY
    std::optional<std::string> sum;     // KEY
    std::vector<CommandTemplate> commands;
    std::vector<CommandTemplate> batchCommands;
    bool quiet = false;                   // the exit code is enough
    std::optional<std::string> newer;     // native: only files changed after that one
    bool watch = false;                   // go on with what arrives
    bool explains = false;                // in place of searching
    std::optional<std::string> catalogue; // as typed: is searched in place of the store
    bool trustsFolderTimes = false;       // also of file systems of unknown kind
};

ExitCode runFind(const FindOptions& options, const Session& session, TerminalInterface& terminal);

} // namespace ov::cli
