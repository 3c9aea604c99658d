// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "cli/commands/demo_command.h"
#include "cli/commands/export_command.h"
#include "cli/commands/find_command.h"
#include "cli/commands/play_command.h"
#include "cli/commands/show_command.h"
#include "cli/messages.h"
#include "cli/output.h"
#include "cli/session.h"
#include "cli/shown_text.h"
#include "cli/terminal_interface.h"
#include "platform/locale_module.h"
#include "platform/process_locale.h"
#include "platform/program_end.h"
#include "platform/threads/errand.h"
#include "plugin/host_error.h"
#include "support/version.h"

#include <CLI/CLI.hpp>

#include <csignal>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <limits>
#include <map>
#include <string>
#include <string_view>

namespace {

using namespace ov::cli;

struct Arguments {
    SessionOptions session;
    FindOptions find;
    ExportOptions exported;
    std::string show;
    std::string play;
    std::string demoDirectory;
    int demoCount = 500;
    std::uint32_t demoSeed = 1;
};

constexpr const char* criterionHelp =
    "A CRITERION is FIELD OPERATOR [VALUE], for example\n"
    "  'author contains müller'   'priority = HOCH'   'dictated this-week'\n"
    "  'due between 2026-11-01..2026-11-30'   'length >= 00:01:00'   'marker marked'\n"
    "`ovsearch fields` lists the fields and what each offers.\n"
    "Exit codes: 0 found, 1 nothing found, 2 wrong usage, 3 the store or a file cannot be read,\n"
    "130 interrupted.";

constexpr const char* versionOption = "--version";

// An empty argument is a mistake, mostly a variable of a script that was never set.
const CLI::Validator notEmpty(
    [](const std::string& text) { return std::string(text.empty() ? "must not be empty" : ""); },
    "");

CLI::Validator inRange(std::int32_t lowest) {
    return CLI::Range(lowest, std::numeric_limits<std::int32_t>::max()).description("");
}

CLI::Option* addPath(CLI::App& command, const std::string& name, std::string& path,
                     const std::string& help) {
    return command.add_option(name, path, help)->type_name("")->required()->check(notEmpty);
}

// Before the command or behind it.
void addCommonOptions(CLI::App& command, Arguments& arguments) {
    command
        .add_option("--language", arguments.session.language,
                    "Language of captions and codes: de or en")
        ->type_name("LANGUAGE")
        ->check(CLI::IsMember({"de", "en"}).description(""));
    command
        .add_option("--settings", arguments.session.settingsDirectory,
                    "Folder to use in place of the per-user settings folder")
        ->type_name("DIR")
        ->check(notEmpty);
}

void addFormat(CLI::App& command, HitFormat& format) {
    static const std::map<std::string, HitFormat> formats = {{"table", HitFormat::table},
                                                             {"csv", HitFormat::csv},
                                                             {"json", HitFormat::json},
                                                             {"paths", HitFormat::paths}};
    command
        .add_option_function<std::string>(
            "--format", [&format](const std::string& name) { format = formats.at(name); },
            "table, csv, json or paths")
        ->type_name("FORMAT")
        ->check(CLI::IsMember(formats).description(""));
}

void addSeparator(CLI::App& command, std::optional<char>& separator, const std::string& usual) {
    static const std::map<std::string, char> separators = {
        {",", ','}, {"comma", ','}, {";", ';'}, {"semicolon", ';'}, {"tab", '\t'}};
    command
        .add_option_function<std::string>(
            "--separator",
            [&separator](const std::string& name) { separator = separators.at(name); },
            "What parts the cells of CSV: comma, semicolon or tab; else " + usual)
        ->type_name("SEPARATOR")
        ->check(CLI::IsMember(separators).description(""));
}

void addSearchOptions(CLI::App& command, SearchOptions& search) {
    command.footer(criterionHelp);
    command.add_option("ROOT", search.root, "Folder to search; else that of the settings")
        ->type_name("")
        ->check(notEmpty);
    command.add_option("-c,--criterion", search.criteria, "Criterion to match; may repeat")
        ->type_name("CRITERION")
        ->expected(1)
        ->take_all()
        ->allow_extra_args(false); // what follows is ROOT
    command.add_flag("--any", search.any, "One matching criterion is enough");
    command.add_option("--max-depth", search.maxDepth, "Levels of folders below ROOT; -1 for all")
        ->type_name("N")
        ->check(inRange(-1))
        ->capture_default_str();
    command.add_option("--limit", search.limit, "End after this many hits")
        ->type_name("N")
        ->check(inRange(1))
        ->capture_default_str();
    command.add_option("--columns", search.columns, "Columns to print, parted by commas")
        ->type_name("KEYS")
        ->delimiter(',')
        ->expected(1)
        ->take_all()
        ->allow_extra_args(false);
    command.add_option("--sort", search.sort, "Field to sort by")->type_name("KEY[:desc]");
}

CLI::Option* addCriteriaFile(CLI::App& command, auto& files, const std::string& help) {
    return command.add_option("--criteria-file", files, help)
        ->type_name("FILE")
        ->expected(1)
        ->check(notEmpty);
}

CLI::App* addFind(CLI::App& app, Arguments& arguments) {
    CLI::App* command = app.add_subcommand("find", "Search a store of dictations");
    addSearchOptions(*command, arguments.find.search);
    addCriteriaFile(*command, arguments.find.criteriaFiles,
                    "Also the criteria of this file; a further file is a search of its own")
        ->take_all()
        ->allow_extra_args(false);
    addFormat(*command, arguments.find.format);
    addSeparator(*command, arguments.find.separator, "a comma");
    command->add_flag("-0,--null", arguments.find.zeroEnded, "End paths by a zero byte");
    command->add_flag("--trust-folder-times", arguments.find.trustsFolderTimes,
                      "List unchanged folders once, on unknown file systems too");
    return command;
}

CLI::App* addExport(CLI::App& app, Arguments& arguments) {
    ExportOptions& options = arguments.exported;
    CLI::App* command =
        app.add_subcommand("export", "Search, and write a list for other programs or for paper");
    addPath(*command, "FILE", options.file,
            "File to write; its ending is .pdf, .xlsx, .csv, .html, .json or .txt");
    addSearchOptions(*command, options.search);
    addCriteriaFile(*command, options.search.criteriaFile, "Also the criteria of this file");
    command->add_option("--title", options.title, "Title of the list")->type_name("TEXT");
    addSeparator(*command, options.separator, "as the locale has it");
    command->add_flag("--force", options.force, "Replace FILE when it exists");
    return command;
}

CLI::App* addShow(CLI::App& app, Arguments& arguments) {
    CLI::App* command = app.add_subcommand("show", "Print every field of one dictation");
    addPath(*command, "FILE", arguments.show, "The dictation");
    return command;
}

CLI::App* addPlay(CLI::App& app, Arguments& arguments) {
    CLI::App* command = app.add_subcommand("play", "Play a dictation; q or Ctrl-C ends it");
    addPath(*command, "FILE", arguments.play, "The sound file");
    return command;
}

CLI::App* addDemo(CLI::App& app, Arguments& arguments) {
    CLI::App* command = app.add_subcommand("demo", "Write a store of made-up dictations");
    addPath(*command, "DIR", arguments.demoDirectory, "Folder, missing or empty");
    command->add_option("--count", arguments.demoCount, "How many dictations")
        ->type_name("N")
        ->check(inRange(0))
        ->capture_default_str();
    command->add_option("--seed", arguments.demoSeed, "The same seed and day give the same store")
        ->type_name("S")
        ->capture_default_str();
    return command;
}

// Scripts ask often, and the options take longer to set up than all else.
ExitCode tellVersion() {
    Output output(stdout);
    output.write(std::string("ovsearch ") + ov::version::text + "\n");
    return output.finish(ExitCode::found);
}

ExitCode run(int argc, char** argv) {
    Arguments arguments;
    CLI::App app("Searches stores of dictations by what their file names tell.", "ovsearch");
    app.set_version_flag(versionOption, std::string("ovsearch ") + ov::version::text);
    app.require_subcommand(1);
    app.failure_message([](const CLI::App*, const CLI::Error& error) {
        return "ovsearch: " + shownText(error.what()) + "\nRun with --help for more information.\n";
    });
    CLI::App* find = addFind(app, arguments);
    CLI::App* show = addShow(app, arguments);
    CLI::App* fields = app.add_subcommand("fields", "List the fields and their operators");
    CLI::App* play = addPlay(app, arguments);
    CLI::App* demo = addDemo(app, arguments);
    CLI::App* exported = addExport(app, arguments);
    for (CLI::App* command : {&app, find, show, fields, play, demo, exported})
        addCommonOptions(*command, arguments);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? Output(stdout).finish(ExitCode::found) : ExitCode::usage;
    }

    TerminalInterface terminal;
    const Session session(arguments.session);
    if (*find)
        return runFind(arguments.find, session, terminal);
    if (*exported)
        return runExport(arguments.exported, session, terminal);
    if (*show)
        return runShow(arguments.show);
    if (*play)
        return runPlay(arguments.play, terminal);
    if (*demo)
        return runDemo(arguments.demoDirectory, arguments.demoCount, arguments.demoSeed, terminal);
    return runFields();
}

} // namespace

int main(int argc, char** argv) {
    if (argc == 2 && std::string_view(argv[1]) == versionOption)
        return static_cast<int>(tellVersion());
    ov::platform::useMessagesOfEnvironment();
    ov::platform::endWithoutLeftovers();
    ov::platform::waitWithoutEnd();
    try {
        const ExitCode code = run(argc, argv);
        if (const auto problem = ov::platform::localeProblem(); !problem.ok())
            complain("dates, numbers and order are those of no country: " + problem.description());
        if (code == ExitCode::interrupted)
            ov::platform::endBySignal(SIGINT); // a script's loop then ends too
        return static_cast<int>(code);
    } catch (const ov::HostError& error) {
        complain(error.description());
    } catch (const std::exception& error) {
        complain(error.what());
    }
    return static_cast<int>(ExitCode::unreadable);
}
