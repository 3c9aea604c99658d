// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include <chrono>
#include <cstdio>
#include <memory>
#include <optional>

// What a terminal program needs to know of its surroundings.

namespace ov::platform {

// True when the stream is shown to a person.
bool isTerminal(std::FILE* stream) noexcept;

// Columns of the terminal behind the stream; 80 when it does not say.
int terminalWidth(std::FILE* stream) noexcept;

// Single keys from the terminal on standard input, as they are pressed and without showing them.
// One at a time; the terminal is as before when it ends, also when a signal ends the program.
// Ctrl-C is a key like others meanwhile. Where standard input is no terminal there are no keys.
class TerminalKeys {
public:
    static constexpr char controlC = '\x03';

    TerminalKeys();
    ~TerminalKeys();
    TerminalKeys(const TerminalKeys&) = delete;
    TerminalKeys& operator=(const TerminalKeys&) = delete;

    // The next key; nothing when none comes in time, or when a signal does.
    std::optional<char> wait(std::chrono::milliseconds longest);

private:
    struct State;
    std::unique_ptr<State> state_; // nullptr: no terminal
};

} // namespace ov::platform
