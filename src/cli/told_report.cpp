// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "cli/told_report.h"

#include "cli/messages.h"
#include "cli/terminal_interface.h"

#include <string>
#include <string_view>

namespace ov::cli {

using modDictation::SearchReport;

namespace {

void append(std::string& list, std::string_view parting, const std::string& part) {
    list.append(list.empty() ? "" : parting).append(part);
}

std::string leftOut(const SearchReport& report) {
    std::string list;
    if (report.foldersUnreadable > 0)
        append(list, ", ",
               counted(report.foldersUnreadable, "folder that cannot be read",
                       "folders that cannot be read"));
    if (report.foldersTooDeep > 0)
        append(list, ", ",
               counted(report.foldersTooDeep, "folder below --max-depth",
                       "folders below --max-depth"));
    if (report.namesSkipped > 0)
        append(list, ", ",
               counted(report.namesSkipped, "name with a backslash", "names with a backslash"));
    return list.empty() ? list : "left out: " + list;
}

bool isWhole(const SearchReport& report) {
    return leftOut(report).empty() && !report.limitReached && !report.stopped;
}

} // namespace

void tellReport(const SearchReport& report, std::int32_t hitCount, const Telling& telling) {
    if (telling.messages)
        for (const platform::Status& problem : report.problems)
            complain(problem.description());
    std::string summary = leftOut(report);
    if (TerminalInterface::interrupted() && report.stopped)
        append(summary, "; ", "stopped, not all was looked at");
    else if (report.limitReached)
        append(summary, "; ",
               "the limit of " + std::to_string(hitCount) + " was reached, there may be more");
    if (!summary.empty())
        complain(summary);
}

ExitCode searchResult(const SearchReport& report, std::int32_t hitCount, const Telling& telling) {
    if (report.rootVanished || (telling.strict && !isWhole(report)))
        return ExitCode::unreadable;
    if (hitCount > 0)
        return ExitCode::found;
    // What could not be read may hold what was looked for.
    return report.foldersUnreadable > 0 ? ExitCode::unreadable : ExitCode::nothingFound;
}

} // namespace ov::cli
