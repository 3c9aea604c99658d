// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "cli/options/look_options.h"

namespace ov::cli {

namespace {

void addWhen(CLI::App& command, const std::string& name, When& when, const std::string& help) {
    command
        .add_option_function<std::string>(
            name,
            [&when](const std::string& word) {
                when = word == "auto"     ? When::automatic
                       : word == "always" ? When::always
                                          : When::never;
            },
            help + ": auto, always or never")
        ->type_name("WHEN")
        ->check(oneOf({"auto", "always", "never"}));
}

} // namespace

void addColorAndPager(CLI::App& command, LookOptions& looks) {
    addWhen(command, "--color", looks.color, "Colour on a terminal");
    addWhen(command, "--pager", looks.pager, "A pager for what is longer than the screen");
}

void addHyperlinks(CLI::App& command, LookOptions& looks) {
    addWhen(command, "--hyperlink", looks.hyperlinks, "Make rows lead to their files");
}

} // namespace ov::cli
