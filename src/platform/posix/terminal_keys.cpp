// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "platform/program_end.h"
#include "platform/terminal/terminal.h"

#include <array>
#include <csignal>
#include <poll.h>
#include <termios.h>
#include <unistd.h>

namespace ov::platform {

namespace {

constexpr std::array<int, 3> endingSignals{SIGTERM, SIGHUP, SIGQUIT};

// For the signal handler, which may touch nothing else.
termios& savedMode() noexcept {
    static termios mode{};
    return mode;
}

// Else whoever reads keys, or sets the mode, is stopped.
bool hasTerminal() noexcept {
    return tcgetpgrp(STDIN_FILENO) == getpgrp();
}

void setMode(const termios& mode) noexcept {
    if (hasTerminal())
        tcsetattr(STDIN_FILENO, TCSANOW, &mode);
}

extern "C" void restoreAndEnd(int signal) {
    setMode(savedMode());
    endBySignal(signal);
}

void takeKeys() noexcept {
    termios mode = savedMode();
    mode.c_iflag &= ~static_cast<tcflag_t>(ICRNL); // else Enter would be Ctrl-J
    mode.c_lflag &= ~static_cast<tcflag_t>(ICANON | ECHO);
    mode.c_cc[VMIN] = 1;
    mode.c_cc[VTIME] = 0;
    mode.c_cc[VINTR] = _POSIX_VDISABLE;
    setMode(mode);
}

// The shell had the terminal meanwhile.
extern "C" void takeKeysAgain(int /*signal*/) {
    takeKeys();
}

} // namespace

struct TerminalKeys::State {
    std::array<struct sigaction, endingSignals.size()> before{};
    struct sigaction goingOn {}; // before
    bool ended = false;          // nobody is there any more
};

TerminalKeys::TerminalKeys() {
    if (isatty(STDIN_FILENO) != 1 || tcgetattr(STDIN_FILENO, &savedMode()) != 0)
        return;
    state_ = std::make_unique<State>();
    struct sigaction action {};
    action.sa_handler = restoreAndEnd;
    for (std::size_t i = 0; i < endingSignals.size(); ++i) {
        sigaction(endingSignals[i], nullptr, &state_->before[i]);
        if (state_->before[i].sa_handler != SIG_IGN)
            sigaction(endingSignals[i], &action, nullptr);
    }
    action.sa_handler = takeKeysAgain;
    action.sa_flags = SA_RESTART;
    sigaction(SIGCONT, &action, &state_->goingOn);
    takeKeys();
}

TerminalKeys::~TerminalKeys() {
    if (!state_)
        return;
    sigaction(SIGCONT, &state_->goingOn, nullptr);
    setMode(savedMode());
    for (std::size_t i = 0; i < endingSignals.size(); ++i)
        sigaction(endingSignals[i], &state_->before[i], nullptr);
}

std::optional<char> TerminalKeys::wait(std::chrono::milliseconds longest) {
    const bool usable = state_ && !state_->ended && hasTerminal();
    pollfd waiting{usable ? STDIN_FILENO : -1, POLLIN, 0};
    if (poll(&waiting, 1, static_cast<int>(longest.count())) <= 0)
        return std::nullopt;
    char key = 0;
    if (read(STDIN_FILENO, &key, 1) == 1)
        return key;
    state_->ended = true;
    return std::nullopt;
}

} // namespace ov::platform
