// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "cli/exit_code.h"
#include "cli/hit_writer.h"

namespace ov::cli {

class Session;
class TerminalInterface;

// What `ovsearch find` was asked for, as typed.
struct FindOptions {
    std::string root; // native; empty: the dictation root of the settings
    std::vector<std::string> criteria;
    bool any = false;
    std::string criteriaFile; // native
    std::int32_t maxDepth = 50;
    std::int32_t limit = 999999;
    std::vector<std::string> columns;
    std::string sort; // KEY or KEY:desc
    HitFormat format = HitFormat::table;
    bool zeroEnded = false;
};

ExitCode runFind(const FindOptions& options, const Session& session, TerminalInterface& terminal);

} // namespace ov::cli
