// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "cli/exit_code.h"
#include "cli/hit_writer.h"
#include "cli/search_request.h"

namespace ov::cli {

// What `ovsearch find` was asked for, as typed.
struct FindOptions {
    SearchOptions search;
    std::vector<std::string> criteriaFiles; // native; a search for each, or one without any
    std::optional<HitFormat> format;        // else a table, or paths that end by a zero byte
    std::optional<char> separator;          // of CSV
    bool raw = false;                       // likewise
    bool zeroEnded = false;
    bool quiet = false; // the exit code is enough
    LookOptions looks;
    bool explains = false;          // in place of searching
    bool trustsFolderTimes = false; // also of file systems of unknown kind
};

ExitCode runFind(const FindOptions& options, const Session& session, TerminalInterface& terminal);

} // namespace ov::cli
