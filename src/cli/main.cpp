// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "cli/commands/demo_command.h"
#include "cli/messages.h"
#include "cli/options/catalogue_options.h"
#include "cli/options/command_words.h"
#include "cli/options/find_options.h"
#include "cli/options/look_options.h"
#include "cli/options/search_words.h"
#include "cli/options/show_options.h"
#include "cli/options/usage.h"
#include "cli/output.h"
#include "cli/play/play_options.h"
#include "cli/session.h"
#include "cli/terminal_interface.h"
#include "platform/locale_module.h"
#include "platform/process_locale.h"
#include "platform/program_end.h"
#include "platform/terminal/child_process.h"
#include "platform/terminal/terminal.h"
#include "platform/threads/errand.h"
#include "plugin/host_error.h"
#include "support/version.h"

#include <algorithm>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <limits>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace {

using namespace ov::cli;

struct Arguments {
    SessionOptions session;
    FindOptions find;
    ExportOptions exported;
    ShowOptions show;
    LookOptions looks; // of what fields prints
    CatalogueOptions catalogue;
    std::string help;
    PlayOptions play;
    DeviceFormat deviceFormat = DeviceFormat::table;
    std::string demoDirectory;
    int demoCount = 500;
    std::uint32_t demoSeed = 1;
};

constexpr const char* versionOption = "--version";

// Before the command or behind it.
void addCommonOptions(CLI::App& command, Arguments& arguments) {
    command
        .add_option("--language", arguments.session.language,
                    "Language of captions and codes: de or en")
        ->type_name("LANGUAGE")
        ->check(oneOf({"de", "en"}));
    command
        .add_option("--settings", arguments.session.settingsDirectory,
                    "Folder to use in place of the per-user settings folder")
        ->type_name("DIR")
        ->check(folderName);
}

CLI::App* addFields(CLI::App& app, Arguments& arguments) {
    CLI::App* command = app.add_subcommand("fields", "List the fields and their operators");
    addColorAndPager(*command, arguments.looks);
    return command;
}

CLI::App* addHelp(CLI::App& app, Arguments& arguments) {
    CLI::App* command = app.add_subcommand("help", "Tell the options of a command");
    command->add_option("COMMAND", arguments.help, "The command; else all of them")->type_name("");
    return command;
}

CLI::App* addDemo(CLI::App& app, Arguments& arguments) {
    CLI::App* command = app.add_subcommand("demo", "Write a store of made-up dictations");
    addPath(*command, "DIR", arguments.demoDirectory, "Folder, missing or empty")
        ->check(folderName);
    command->add_option("--count", arguments.demoCount, "How many dictations")
        ->type_name("N")
        ->check(inRange(0))
        ->capture_default_str();
    command->add_option("--seed", arguments.demoSeed, "The same seed and day give the same store")
        ->type_name("S")
        ->check(inRange(0, std::numeric_limits<std::uint32_t>::max()))
        ->capture_default_str();
    return command;
}

// Scripts ask often, and the options take longer to set up than all else.
ExitCode tellVersion() {
    Output output(stdout);
    output.write(std::string("ovsearch ") + ov::version::text + "\n");
    return output.finish(ExitCode::found);
}

// Also what was asked for: `--help`, `--version`.
ExitCode refuse(const CLI::App& app, const CLI::ParseError& error) {
    if (error.get_exit_code() == 0) {
        app.exit(error);
        return Output(stdout).finish(ExitCode::found);
    }
    complain(usageComplaint(app, error));
    return ExitCode::usage;
}

ExitCode tellHelp(const CLI::App& app, const std::string& command) {
    const std::string help = helpFor(app, command);
    if (help.empty()) {
        complain(unknownCommand(app, command));
        return ExitCode::usage;
    }
    Output output(stdout);
    output.write(help);
    return output.finish(ExitCode::found);
}

void parse(CLI::App& app, std::vector<std::string> texts, Arguments& arguments) {
    arguments.find.search.words = takeSearchWords(app, texts);
    arguments.exported.search.words = arguments.find.search.words;
    arguments.play.search.words = arguments.find.search.words;
    std::ranges::reverse(texts); // as it takes them
    app.parse(std::move(texts));
}

// Each is true once it has been asked for.
struct Commands {
    Commands(CLI::App& app, Arguments& arguments)
        : find(addFind(app, arguments.find)),
          show(addShow(app, arguments.show)),
          fields(addFields(app, arguments)),
          play(addPlay(app, arguments.play)),
          devices(addDevices(app, arguments.deviceFormat)),
          demo(addDemo(app, arguments)),
          exported(addExport(app, arguments.exported)),
          catalogue(addCatalogue(app, arguments.catalogue)),
          help(addHelp(app, arguments)) {
        for (CLI::App* command :
             {&app, find, show, fields, play, devices, demo, exported, catalogue})
            addCommonOptions(*command, arguments);
    }

    // In the order in which they are listed.
    CLI::App* find;
    CLI::App* show;
    CLI::App* fields;
    CLI::App* play;
    CLI::App* devices;
    CLI::App* demo;
    CLI::App* exported;
    CLI::App* catalogue;
    CLI::App* help;
};

ExitCode runAsked(const Commands& asked, const Arguments& arguments) {
    TerminalInterface terminal;
    const Session session(arguments.session);
    if (*asked.find)
        return runFind(arguments.find, session, terminal);
    if (*asked.exported)
        return runExport(arguments.exported, session, terminal);
    if (*asked.show)
        return runShow(arguments.show);
    if (*asked.play)
        return runPlay(arguments.play, session, terminal);
    if (*asked.devices)
        return runDevices(arguments.deviceFormat);
    if (*asked.demo)
        return runDemo(arguments.demoDirectory, arguments.demoCount, arguments.demoSeed, terminal);
    if (*asked.catalogue)
        return runCatalogue(arguments.catalogue, terminal);
    return runFields(arguments.looks);
}

ExitCode run(int argc, char** argv) {
    Arguments arguments;
    CLI::App app("Searches stores of dictations by what their file names tell.", "ovsearch");
    app.set_version_flag(versionOption, std::string("ovsearch ") + ov::version::text);
    app.require_subcommand(1);
    const Commands asked(app, arguments);
    try {
        parse(app, withWholeCommands({argv + std::min(argc, 1), argv + argc}), arguments);
    } catch (const CLI::ParseError& error) {
        return refuse(app, error);
    }
    return *asked.help ? tellHelp(app, arguments.help) : runAsked(asked, arguments);
}

int interruptingSignal() {
    const int signal = TerminalInterface::interruptingSignal();
    return signal != 0 ? signal : SIGINT;
}

} // namespace

int main(int argc, char** argv) {
    if (argc == 2 && std::string_view(argv[1]) == versionOption)
        return static_cast<int>(tellVersion());
    ov::platform::keepStandardStreams();
    ov::platform::useMessagesOfEnvironment();
    ov::platform::endWithoutLeftovers();
    ov::platform::waitWithoutEnd();
    ov::platform::learnOfChildren();
    try {
        const ExitCode code = run(argc, argv);
        if (const auto problem = ov::platform::localeProblem(); !problem.ok())
            complain("dates, numbers and order are those of no country: " + problem.description());
        if (code == ExitCode::interrupted)
            ov::platform::endBySignal(interruptingSignal()); // a script's loop then ends too
        return static_cast<int>(code);
    } catch (const ov::HostError& error) {
        complain(error.description());
    } catch (const std::exception& error) {
        complain(error.what());
    }
    return static_cast<int>(ExitCode::unreadable);
}
