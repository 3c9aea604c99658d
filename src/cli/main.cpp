// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "cli/commands/demo_command.h"
#include "cli/commands/play_command.h"
#include "cli/commands/show_command.h"
#include "cli/messages.h"
#include "cli/options/find_options.h"
#include "cli/options/search_words.h"
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

#include <algorithm>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <exception>
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
    std::string show;
    std::string play;
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
        ->check(CLI::IsMember({"de", "en"}).description(""));
    command
        .add_option("--settings", arguments.session.settingsDirectory,
                    "Folder to use in place of the per-user settings folder")
        ->type_name("DIR")
        ->check(notEmpty);
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

void parse(CLI::App& app, std::vector<std::string> texts, Arguments& arguments) {
    arguments.find.search.words = takeSearchWords(app, texts);
    arguments.exported.search.words = arguments.find.search.words;
    std::ranges::reverse(texts); // as it takes them
    app.parse(std::move(texts));
}

ExitCode run(int argc, char** argv) {
    Arguments arguments;
    CLI::App app("Searches stores of dictations by what their file names tell.", "ovsearch");
    app.set_version_flag(versionOption, std::string("ovsearch ") + ov::version::text);
    app.require_subcommand(1);
    app.failure_message([](const CLI::App*, const CLI::Error& error) {
        return "ovsearch: " + shownText(error.what()) + "\nRun with --help for more information.\n";
    });
    CLI::App* find = addFind(app, arguments.find);
    CLI::App* show = addShow(app, arguments);
    CLI::App* fields = app.add_subcommand("fields", "List the fields and their operators");
    CLI::App* play = addPlay(app, arguments);
    CLI::App* demo = addDemo(app, arguments);
    CLI::App* exported = addExport(app, arguments.exported);
    for (CLI::App* command : {&app, find, show, fields, play, demo, exported})
        addCommonOptions(*command, arguments);
    try {
        parse(app, {argv + std::min(argc, 1), argv + argc}, arguments);
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
