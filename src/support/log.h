// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/status.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

// The one logging path. Lines go to the log directory (id 10), each opened, appended and closed,
// ended by CR LF: "<short date> <long time> - <message>". The last 25 lines of this thread are
// kept in memory for the host's log view. Nothing here throws; a line that cannot be written is
// shown to the user instead.

namespace ov {

// An error as it is reported: its number and what it says about itself.
struct Error {
    int number = 0;
    std::string description;

    Error() = default;
    Error(int errorNumber, std::string text) : number(errorNumber), description(std::move(text)) {}
    Error(const platform::Status& status) // NOLINT(google-explicit-constructor): same thing
        : number(status.number()), description(status.description()) {}
};

// Line ends and other control characters in `message` are written as "\r", "\n" or "\xNN", so
// that a message stays one line. `fileName` empty: the log's own name. `deleteFirst` empties the
// file before the line is written.
// Returns false when the line could not be written: who logs in a loop stops logging then, since
// each failure shows a message box.
bool WriteLog(std::string_view message, std::string_view fileName = {}, bool deleteFirst = false);

// "ERROR (53): LoadSettings - File not found". `description` replaces the error's own;
// without either it is "<Unknown>". `showMessage` also shows the text in a message box. Returns
// what WriteLog returned.
bool WriteErrorLog(const Error& error, std::string_view procedureName, bool showMessage = false,
                   std::string_view description = {}, std::string_view fileName = {},
                   bool deleteFirst = false);

constexpr std::size_t recentLogLineCount = 25;

// The lines last written by this thread, oldest first, at most recentLogLineCount.
std::vector<std::string> recentLogLines();

// For tests: forgets the recent lines.
void resetLog();

} // namespace ov
