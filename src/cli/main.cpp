// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include <clocale>
#include <cstdio>
#include <exception>
#include <map>
#include <optional>

#include <CLI/CLI.hpp>

#include "cli/demo_command.h"
#include "cli/find_command.h"
#include "cli/messages.h"
#include "cli/session.h"
#include "cli/show_command.h"
#include "cli/terminal_interface.h"
#include "plugin/host_error.h"
#include "support/version.h"

namespace {

using namespace ov::cli;

struct Arguments {
    SessionOptions session;
    FindOptions find;
    std::string show;
    std::string demoDirectory;
    int demoCount = 500;
    std::uint32_t demoSeed = 1;
};

constexpr const char* criterionHelp =
    "A CRITERION is FIELD OPERATOR [VALUE], for example\n"
    "  'author contains müller'   'priority = HOCH'   'dictated this-week'\n"
    "  'due between 2026-11-01..2026-11-30'   'length >= 00:01:00'   'marker marked'\n"
    "`ovsearch fields` lists the fields and what each offers.\n"
    "Exit codes: 0 found, 1 nothing found, 2 wrong usage, 3 the store or a file cannot be read.";

void addCommonOptions(CLI::App& command, Arguments& arguments) {
    command
        .add_option("--language", arguments.session.language,
                    "Language of captions and codes: de or en")
        ->check(CLI::IsMember({"de", "en"}));
    command.add_option("--settings", arguments.session.settingsDirectory,
                       "Folder to use in place of the per-user settings folder")
        ->type_name("DIR");
}

CLI::App* addFind(CLI::App& app, Arguments& arguments) {
    const std::map<std::string, HitFormat> formats = {{"table", HitFormat::table},
                                                      {"csv", HitFormat::csv},
                                                      {"json", HitFormat::json},
                                                      {"paths", HitFormat::paths}};
    FindOptions& find = arguments.find;
    CLI::App* command = app.add_subcommand("find", "Search a store of dictations");
    command->footer(criterionHelp);
    command->add_option("ROOT", find.root, "Folder to search; else that of the settings");
    command->add_option("-c,--criterion", find.criteria, "Criterion to match; may repeat")
        ->type_name("CRITERION")
        ->expected(1)
        ->take_all();
    command->add_flag("--any", find.any, "One matching criterion is enough");
    command->add_option("--criteria-file", find.criteriaFile, "Also the criteria of this file")
        ->type_name("FILE");
    command->add_option("--max-depth", find.maxDepth, "Levels of folders below ROOT; -1 for all")
        ->check(CLI::Range(-1, 1000))
        ->capture_default_str();
    command->add_option("--limit", find.limit, "End after this many hits")
        ->check(CLI::Range(1, 999999))
        ->capture_default_str();
    command->add_option("--columns", find.columns, "Columns to print, parted by commas")
        ->type_name("KEYS")
        ->delimiter(',')
        ->expected(1);
    command->add_option("--sort", find.sort, "Column to sort by")->type_name("KEY[:desc]");
    command->add_option("--format", find.format, "table, csv, json or paths")
        ->type_name("FORMAT")
        ->transform(CLI::CheckedTransformer(formats).description(""));
    command->add_flag("-0,--null", find.zeroEnded, "End paths by a zero byte");
    return command;
}

CLI::App* addShow(CLI::App& app, Arguments& arguments) {
    CLI::App* command = app.add_subcommand("show", "Print every field of one dictation");
    command->add_option("FILE", arguments.show, "The dictation")->required();
    return command;
}

CLI::App* addDemo(CLI::App& app, Arguments& arguments) {
    CLI::App* command = app.add_subcommand("demo", "Write a store of made-up dictations");
    command->add_option("DIR", arguments.demoDirectory, "Folder, missing or empty")->required();
    command->add_option("--count", arguments.demoCount, "How many dictations")
        ->check(CLI::Range(0, 1000000))
        ->capture_default_str();
    command->add_option("--seed", arguments.demoSeed, "The same seed and day give the same store")
        ->capture_default_str();
    return command;
}

ExitCode run(int argc, char** argv) {
    Arguments arguments;
    CLI::App app("Searches stores of dictations by what their file names tell.", "ovsearch");
    app.set_version_flag("--version", std::string("ovsearch ") + ov::version::text);
    app.require_subcommand(1);
    CLI::App* find = addFind(app, arguments);
    CLI::App* show = addShow(app, arguments);
    CLI::App* fields = app.add_subcommand("fields", "List the fields and their operators");
    CLI::App* demo = addDemo(app, arguments);
    for (CLI::App* command : {find, show, fields, demo})
        addCommonOptions(*command, arguments);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? ExitCode::found : ExitCode::usage;
    }

    TerminalInterface terminal;
    const Session session(arguments.session);
    if (*find)
        return runFind(arguments.find, session, terminal);
    if (*show)
        return runShow(arguments.show);
    if (*demo)
        return runDemo(arguments.demoDirectory, arguments.demoCount, arguments.demoSeed, terminal);
    return runFields();
}

} // namespace

int main(int argc, char** argv) {
    std::setlocale(LC_ALL, "");
    try {
        return static_cast<int>(run(argc, argv));
    } catch (const ov::HostError& error) {
        complain(error.description());
    } catch (const std::exception& error) {
        complain(error.what());
    }
    return static_cast<int>(ExitCode::unreadable);
}
