// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "platform/status.h"

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <optional>
#include <string>

// What a terminal program needs to know of its surroundings.

namespace ov::platform {

// Puts something that cannot be read or written in place of a standard stream that was closed when
// the program started: a file of ours would take its number, and what is said would go into it.
void keepStandardStreams() noexcept;

// True when the stream is shown to a person.
bool isTerminal(std::FILE* stream) noexcept;

// Columns of the terminal behind the stream; 80 when it does not say.
int terminalWidth(std::FILE* stream) noexcept;
// Its lines; 24 when it does not say.
int terminalHeight(std::FILE* stream) noexcept;

// The name of this machine, as the network knows it.
std::string hostName();

// Whether a program of that name is found where commands are looked for.
bool isCommand(const std::string& name);

// A program that reads what it is given, as one that shows a long text on the terminal does, and
// is waited for at the end. Until then a write that it does not want any more is an error and not
// the end of this program.
class FedProgram {
public:
    FedProgram() = default;
    ~FedProgram() { finish(); }
    FedProgram(const FedProgram&) = delete;
    FedProgram& operator=(const FedProgram&) = delete;

    // By the shell. A variable of the environment that is not set gets the value given for it,
    // "NAME=value".
    Status start(const std::string& command, const std::string& setting);
    // nullptr while none runs.
    std::FILE* input() const noexcept { return input_; }
    // Tells it that all is there, and waits until it has ended. False when the shell could not run
    // the command: nobody has seen anything.
    bool finish() noexcept;

private:
    std::FILE* input_ = nullptr;
    long process_ = 0;
    void (*brokenPipe_)(int) = nullptr; // what was done before
};

// All that comes from a file, a pipe or a terminal, "-" for standard input, as the system writes
// its name. Waits for who writes into it, but not when a signal is handled meanwhile. More than
// `limit` bytes are refused.
Status readInput(const std::string& native, std::string& content, std::uint64_t limit);

// Single keys from the terminal on standard input, as they are pressed and without showing them.
// One at a time; the terminal is as before when it ends, also when a signal ends the program.
// Ctrl-C is a key like others meanwhile, and Enter is '\r'. Where standard input is no terminal
// there are no keys.
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
