// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "cli/exit_code.h"
#include "cli/looks/looks.h"
#include "cli/search_request.h"

#include <span>

namespace ov::cli {

// Prints how each search is understood and how many dictations of the store meet each criterion,
// whatever the others say; no hits. What could not be read counts for the exit code as in the
// search.
ExitCode runExplain(std::span<const SearchRequest> requests, const LookOptions& looks,
                    const Session& session, TerminalInterface& terminal);

} // namespace ov::cli
