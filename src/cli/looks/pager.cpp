// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "cli/looks/pager.h"

#include "cli/messages.h"
#include "cli/shown_text.h"
#include "platform/terminal/terminal.h"

#include <algorithm>
#include <cstdlib>

namespace ov::cli {

namespace {

std::string wantedCommand() {
    for (const char* const name : {"OVSEARCH_PAGER", "PAGER"})
        if (const char* const command = std::getenv(name))
            return command;
    return platform::isCommand("less") ? "less -FRX" : "";
}

// Without what only tells a terminal something: "ESC [ ... letter", "ESC ] ... ESC \\".
std::string withoutEscapes(std::string_view line) {
    std::string shown;
    while (!line.empty()) {
        const std::size_t escape = std::min(line.find('\x1B'), line.size());
        shown.append(line.substr(0, escape));
        line.remove_prefix(escape);
        const bool isLink = line.starts_with("\x1B]");
        const std::size_t last = isLink ? line.find("\x1B\\") : line.find('m');
        line.remove_prefix(std::min(
            line.size(), last == std::string_view::npos ? line.size() : last + (isLink ? 2 : 1)));
    }
    return shown;
}

} // namespace

bool Pager::isNeededFor(std::string_view text) const {
    std::size_t taken = 0;
    while (!text.empty() && taken <= rows) {
        const std::size_t length = text.find('\n');
        const std::size_t end = std::min(length, text.size());
        const std::size_t needed = columnCount(withoutEscapes(text.substr(0, end)));
        taken += 1 + (needed > 0 ? (needed - 1) / std::max<std::size_t>(columns, 1) : 0);
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return taken > rows;
}

std::optional<Pager> pagerFor(When when) {
    if (when == When::never || !platform::isTerminal(stdout) ||
        (when == When::automatic && isDumbTerminal()))
        return std::nullopt;
    const std::string command = wantedCommand();
    if (command.empty() || command == "cat")
        return std::nullopt;
    const std::string program = command.substr(0, command.find(' '));
    if (program.find_first_of("=$\"'") == std::string::npos && !platform::isCommand(program)) {
        complain("there is no pager \"" + program +
                 "\"; OVSEARCH_PAGER names another one, --pager never goes without");
        return std::nullopt;
    }
    // The line below belongs to the shell.
    const auto rows = static_cast<std::size_t>(std::max(platform::terminalHeight(stdout) - 1, 1));
    return Pager{command, when == When::always ? 0 : rows,
                 static_cast<std::size_t>(platform::terminalWidth(stdout))};
}

} // namespace ov::cli
