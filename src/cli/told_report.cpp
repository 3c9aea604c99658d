// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "cli/told_report.h"

#include "cli/messages.h"
#include "cli/terminal_interface.h"

#include <string>

namespace ov::cli {

using modDictation::SearchReport;

namespace {

void tellProblems(const SearchReport& report) {
    for (const platform::Status& problem : report.problems)
        complain(problem.description());
    const auto told = static_cast<std::int64_t>(report.problems.size());
    const std::int64_t all = report.foldersUnreadable + report.namesSkipped;
    if (all > told)
        complain(std::to_string(all - told) + " more were left out");
}

} // namespace

void tellReport(const SearchReport& report, std::int32_t hitCount) {
    tellProblems(report);
    if (TerminalInterface::interrupted() && report.stopped)
        complain("stopped; what was found until then is shown");
    else if (report.limitReached)
        complain("ended after " + std::to_string(hitCount) +
                 " dictations, there may be more; --limit sets how many");
}

ExitCode searchResult(const SearchReport& report, std::int32_t hitCount) {
    if (report.rootVanished)
        return ExitCode::unreadable;
    if (hitCount > 0)
        return ExitCode::found;
    // What could not be read may hold what was looked for.
    return report.foldersUnreadable > 0 ? ExitCode::unreadable : ExitCode::nothingFound;
}

} // namespace ov::cli
