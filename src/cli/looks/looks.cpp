// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "cli/looks/looks.h"

#include "platform/terminal/terminal.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdlib>
#include <string_view>

namespace ov::cli {

namespace {

std::string_view environment(const char* name) {
    const char* const value = std::getenv(name);
    return value == nullptr ? std::string_view() : value;
}

int numberOf(std::string_view text) {
    int number = 0;
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

bool isWanted(When when, bool automatic) {
    return when == When::always || (when == When::automatic && automatic);
}

// What does not know hyperlinks ignores them at best.
bool knowsHyperlinks() {
    constexpr int firstOfLibrary = 5000;
    constexpr std::array<std::string_view, 5> programs = {"iTerm.app", "WezTerm", "vscode",
                                                          "ghostty", "Hyper"};
    constexpr std::array<std::string_view, 5> terminals = {"xterm-kitty", "xterm-ghostty", "foot",
                                                           "foot-extra", "alacritty"};
    return numberOf(environment("VTE_VERSION")) >= firstOfLibrary ||
           !environment("KONSOLE_VERSION").empty() || !environment("WT_SESSION").empty() ||
           std::ranges::find(programs, environment("TERM_PROGRAM")) != programs.end() ||
           std::ranges::find(terminals, environment("TERM")) != terminals.end();
}

std::size_t widthOfTerminal() {
    const int told = numberOf(environment("COLUMNS"));
    return static_cast<std::size_t>(told > 0 ? told : platform::terminalWidth(stdout));
}

} // namespace

bool isDumbTerminal() {
    return environment("TERM") == "dumb";
}

Looks looksOf(const LookOptions& options) {
    const bool isTerminal = platform::isTerminal(stdout);
    const bool mayObey = isTerminal && !isDumbTerminal();
    Looks looks;
    looks.color = isWanted(options.color, mayObey && environment("NO_COLOR").empty());
    looks.hyperlinks = isWanted(options.hyperlinks, mayObey && knowsHyperlinks());
    if (isTerminal)
        looks.width = widthOfTerminal();
    return looks;
}

std::string asTitles(std::string line, const Looks& looks) {
    if (looks.color && line.ends_with('\n'))
        line.insert(line.size() - 1, "\x1B[0m").insert(0, "\x1B[1;4m");
    return line;
}

} // namespace ov::cli
