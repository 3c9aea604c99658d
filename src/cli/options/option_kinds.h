// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include <CLI/CLI.hpp>

#include <cstdint>
#include <string>

// What options of several commands have in common.

namespace ov::cli {

// An empty argument is a mistake, mostly a variable of a script that was never set.
extern const CLI::Validator notEmpty;

// From `lowest` to the highest that an option takes.
CLI::Validator inRange(std::int32_t lowest);

// An argument that the command cannot do without.
CLI::Option* addPath(CLI::App& command, const std::string& name, std::string& path,
                     const std::string& help);

} // namespace ov::cli
