// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "cli/options/show_options.h"

#include "cli/options/look_options.h"

namespace ov::cli {

CLI::App* addShow(CLI::App& app, ShowOptions& options) {
    CLI::App* command = app.add_subcommand("show", "Print every field of dictations");
    command->add_option("FILE", options.files, "The dictations")
        ->type_name("")
        ->required()
        ->check(notEmpty);
    addChoice<HitFormat>(
        *command, "--format", options.format,
        {{"table", HitFormat::table}, {"json", HitFormat::json}, {"jsonl", HitFormat::jsonl}},
        "table, json or jsonl")
        ->type_name("FORMAT");
    addColorAndPager(*command, options.looks);
    return command;
}

} // namespace ov::cli
