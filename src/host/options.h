// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "host/language.h"

#include <QString>
#include <optional>
#include <string>
#include <variant>

namespace ov::host {

// What the command line asks for. Empty texts were not given.
struct Options {
    std::string store; // absolute, the bytes of its name
    std::optional<Language> language;
    QString settings;   // absolute
    QString plugin;     // absolute
    QString screenshot; // absolute
    bool selfTest = false;
};

// The program ends at once: with help or the version on standard output (0), or with a message
// on standard error (2).
struct EndAtOnce {
    QString text;
    int exitCode = 0;
};

// Needs no display. Reads `argv` only.
std::variant<Options, EndAtOnce> readCommandLine(int argc, char** argv);

} // namespace ov::host
