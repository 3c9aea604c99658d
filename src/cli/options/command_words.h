// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

// The commands of --exec and --exec-batch within the arguments of our own program.

namespace ov::cli {

// The arguments, in which each such command, up to a ";" or to the end, is one. What stands in a
// command is then no option of ours, whatever it looks like. Behind a "--" there are none.
std::vector<std::string> withWholeCommands(const std::vector<std::string>& arguments);

// The words of such a command.
std::vector<std::string> wordsOf(const std::string& command);

} // namespace ov::cli
