// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/status.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

// Programs that a terminal program runs.

namespace ov::platform {

// Runs a program to its end, on our own streams and without a shell. `arguments` begin with its
// name, which is looked up as a shell does. `exitCode` is 128 and the signal's number when a signal
// ended it. A failure: it could not be started.
Status runProgram(const std::vector<std::string>& arguments, int& exitCode);

// What the arguments of a program may take in all, and what one of them takes of it, in bytes.
std::size_t roomForArguments();
constexpr std::size_t roomOfArgument(std::string_view argument) noexcept {
    return argument.size() + 1 + sizeof(char*);
}

// Who started us may have made us ignore how children end, so that none could be waited for. For
// programs, at their start.
void learnOfChildren();

} // namespace ov::platform
