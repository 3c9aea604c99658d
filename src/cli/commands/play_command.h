// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "cli/exit_code.h"
#include "cli/play/list_player.h"
#include "cli/search_request.h"

#include <optional>
#include <string>
#include <vector>

namespace ov::cli {

class Session;
class TerminalInterface;

// What `ovsearch play` was asked for, as typed.
struct PlayOptions {
    std::vector<std::string> files; // native
    SearchOptions search;           // for more of them, where it names anything
    ListOptions list;
    std::optional<std::string> device; // name or number
};

// Plays the files, then what is found, to their end.
ExitCode runPlay(const PlayOptions& options, const Session& session, TerminalInterface& terminal);

} // namespace ov::cli
