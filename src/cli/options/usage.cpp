// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "cli/options/usage.h"

#include "cli/options/did_you_mean.h"
#include "cli/options/option_kinds.h"

#include <algorithm>
#include <string_view>
#include <vector>

namespace ov::cli {

namespace {

using Words = std::vector<std::string>;

Words commandNames(const CLI::App& app) {
    Words names;
    for (const CLI::App* command : app.get_subcommands(nullptr))
        names.push_back(command->get_name());
    return names;
}

Words optionNames(const CLI::App& command) {
    Words names;
    for (const CLI::Option* option : command.get_options())
        for (const std::string& name : option->get_lnames())
            names.push_back("--" + name);
    return names;
}

// The command that was named, or the program.
const CLI::App& commandOf(const CLI::App& app) {
    const auto named = app.get_subcommands();
    return named.empty() ? app : *named.front();
}

std::string helpHint(const CLI::App& app) {
    const CLI::App& command = commandOf(app);
    return &command == &app ? "; \"ovsearch help\" tells what there is"
                            : "; \"ovsearch help " + command.get_name() + "\" tells what there is";
}

bool looksLikeOption(const std::string& argument) {
    return argument.starts_with('-') && argument.find_first_not_of('-') != std::string::npos;
}

std::string unknownOption(const CLI::App& app, const std::string& typed) {
    const CLI::App& command = commandOf(app);
    const std::string name = typed.substr(0, typed.find('='));
    const Words known = optionNames(command);
    if (std::ranges::find(known, name) != known.end())
        return name + " belongs behind \"" + command.get_name() + '"';
    // "-knee", which may have been meant as words are.
    if (!typed.starts_with("--") && typed.size() > 2 &&
        command.get_option_no_throw("WORD") != nullptr)
        return command.get_name() + " has no option \"" + name + "\"; a text to leave out is '!" +
               typed.substr(1) + "', and one that begins with \"-\" is '\"" + typed + "\"'";
    const std::string nobody = &command == &app ? "there is" : command.get_name() + " has";
    return nobody + " no option \"" + name + '"' + didYouMean(name, known, helpHint(app));
}

// An argument that nothing takes.
std::string unexpected(const CLI::App& app, const Words& rest) {
    const auto option = std::ranges::find_if(rest, looksLikeOption);
    if (option != rest.end())
        return unknownOption(app, *option);
    if (app.get_subcommands().empty())
        return unknownCommand(app, rest.front());
    return commandOf(app).get_name() + ": \"" + rest.front() + "\" is too much" + helpHint(app);
}

std::string missing(const CLI::App& app, std::string_view argument) {
    if (app.get_subcommands().empty())
        return "say what to do: " + listOf(commandNames(app));
    return commandOf(app).get_name() + ": " + std::string(argument) + " is missing" + helpHint(app);
}

// "--limit: 1 required N missing", "--any was given a disallowed flag override"
std::string wrongCount(const CLI::App& app, std::string_view message) {
    const std::string name(message.substr(0, message.find_first_of(": ")));
    if (message.find("override") != std::string_view::npos)
        return name + " takes no value";
    if (message.find("At Most") != std::string_view::npos)
        return name + " can be given only once";
    return name + " needs a value behind it" + helpHint(app);
}

} // namespace

std::string unknownCommand(const CLI::App& app, const std::string& typed) {
    const Words names = commandNames(app);
    return "there is no command \"" + typed + '"' +
           didYouMean(typed, names, "; commands are " + listOf(names));
}

std::string usageComplaint(const CLI::App& app, const CLI::ParseError& error) {
    const std::string_view message = error.what();
    switch (static_cast<CLI::ExitCodes>(error.get_exit_code())) {
    case CLI::ExitCodes::RequiredError:
    case CLI::ExitCodes::ExtrasError:
        if (const Words rest = app.remaining(true); !rest.empty())
            return unexpected(app, rest);
        return missing(app, message.substr(0, message.find(" is required")));
    case CLI::ExitCodes::ArgumentMismatch:
        return wrongCount(app, message);
    case CLI::ExitCodes::ConversionError: // of what has no check of its own: a flag
        return std::string(
                   message.substr(message.find("--"), message.find(" = ") - message.find("--"))) +
               " takes no value";
    default:
        return std::string(message);
    }
}

std::string helpFor(const CLI::App& app, const std::string& command) {
    if (command.empty())
        return app.get_formatter()->make_help(&app, app.get_name(), CLI::AppFormatMode::Normal);
    const auto named =
        app.get_subcommands([&command](const CLI::App* one) { return one->get_name() == command; });
    return named.empty() ? std::string() : named.front()->help(app.get_name());
}

} // namespace ov::cli
