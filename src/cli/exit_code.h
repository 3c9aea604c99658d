// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

// Exit codes, the same for every command.

namespace ov::cli {

enum class ExitCode {
    found = 0,
    nothingFound = 1,
    usage = 2,
    unreadable = 3,    // the store or a file; the message says which and why
    commandFailed = 4, // of --exec or --exec-batch: it failed, or could not be started
    interrupted = 130, // the program then ends by SIGINT, which a shell shows as that number
};

} // namespace ov::cli
