// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "cli/exit_code.h"

#include <string>

namespace ov::cli {

class TerminalInterface;

// Plays a sound file to its end, or until q or Ctrl-C is pressed; the space bar pauses. On a
// terminal shows position and level on one line. `file` is native.
ExitCode runPlay(const std::string& file, TerminalInterface& terminal);

} // namespace ov::cli
