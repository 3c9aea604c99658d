// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include <CLI/CLI.hpp>

#include <string>

// What the program tells of its own use.

namespace ov::cli {

// What is wrong with the arguments, in one sentence that says what may stand there.
std::string usageComplaint(const CLI::App& app, const CLI::ParseError& error);

// The options of a command, or of the program for an empty name; empty for what is no command.
std::string helpFor(const CLI::App& app, const std::string& command);

std::string unknownCommand(const CLI::App& app, const std::string& typed);

} // namespace ov::cli
