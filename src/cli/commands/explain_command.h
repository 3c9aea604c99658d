// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "cli/exit_code.h"
#include "cli/search_request.h"

#include <span>

namespace ov::cli {

// Prints how each search is understood and how many dictations of the store meet each criterion,
// whatever the others say; no hits.
ExitCode runExplain(std::span<const SearchRequest> requests, const Session& session,
                    TerminalInterface& terminal);

} // namespace ov::cli
