// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "cli/exit_code.h"
#include "cli/hit_writer.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace ov::cli {

class Session;
class TerminalInterface;

constexpr std::int32_t usualLimit = 999999;

// What `ovsearch find` was asked for, as typed.
struct FindOptions {
    std::optional<std::string> root; // native; else the dictation root of the settings
    std::vector<std::string> criteria;
    bool any = false;
    std::optional<std::string> criteriaFile; // native
    std::int32_t maxDepth = 50;
    std::int32_t limit = usualLimit;
    std::vector<std::string> columns;
    std::optional<std::string> sort; // KEY or KEY:desc
    HitFormat format = HitFormat::table;
    bool zeroEnded = false;
};

ExitCode runFind(const FindOptions& options, const Session& session, TerminalInterface& terminal);

} // namespace ov::cli
