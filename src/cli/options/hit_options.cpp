// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "cli/options/hit_options.h"

#include "cli/options/command_words.h"

namespace ov::cli {

namespace {

// Each is one argument by now, see withWholeCommands().
CLI::Option* addCommand(CLI::App& command, const std::string& name,
                        std::vector<CommandTemplate>& commands, const std::string& help) {
    return command
        .add_option_function<std::vector<std::string>>(
            name,
            [&commands](const std::vector<std::string>& typed) {
                for (const std::string& one : typed)
                    commands.emplace_back(wordsOf(one));
            },
            help)
        ->type_name("COMMAND ;")
        ->expected(1)
        ->take_all()
        ->allow_extra_args(false)
        ->check(notEmpty);
}

} // namespace

void addHitOptions(CLI::App& command, FindOptions& options) {
    command.add_flag("--count", options.count, "Print only how many there are");
    command.add_option("--count-by", options.countBy, "Print how many there are of each value")
        ->type_name("KEY");
    command.add_option("--sum", options.sum, "Print only how long they are in all: length")
        ->type_name("KEY")
        ->check(oneOf({"length"}));
    command.add_option("--newer", options.newer, "Only files changed after this one")
        ->type_name("FILE")
        ->check(notEmpty);
    command.add_flag("--watch", options.watch, "Go on: print what arrives, until Ctrl-C");
    addCommand(command, "-x,--exec", options.commands,
               "Run a command for each, with its path in place of {}");
    addCommand(command, "-X,--exec-batch", options.batchCommands,
               "Run a command for as many as possible at a time");
}

} // namespace ov::cli
