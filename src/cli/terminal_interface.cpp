// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "cli/terminal_interface.h"

#include "cli/messages.h"
#include "cli/shown_text.h"
#include "platform/program_end.h"
#include "platform/terminal/terminal.h"

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <utility>

namespace ov::cli {

namespace {

// NOLINTNEXTLINE(*-avoid-non-const-global-variables): a signal handler may touch nothing else
volatile std::sig_atomic_t interruptedBy = 0;
// NOLINTNEXTLINE(*-avoid-non-const-global-variables): likewise
volatile std::sig_atomic_t outlivesInterrupts = 0;

extern "C" void onInterrupt(int signal) {
    interruptedBy = signal;
    std::signal(signal, outlivesInterrupts != 0 ? onInterrupt : platform::endBySignal);
}

void print(const std::string& text) {
    static_cast<void>(std::fputs(text.c_str(), stderr));
}

// A message box has paragraphs.
std::string onOneLine(const std::string& text) {
    std::string line;
    for (const char c : text)
        if (c != '\r' && c != '\n')
            line.push_back(c);
        else if (!line.ends_with(' '))
            line.push_back(' ');
    return line;
}

} // namespace

TerminalInterface::TerminalInterface()
    : previous_(platform::installUserInterface(this)),
      previousHandler_(std::signal(SIGINT, onInterrupt)),
      showsProgress_(platform::isTerminal(stderr)),
      outputIsTerminal_(platform::isTerminal(stdout)) {
    interruptedBy = 0;
    if (previousHandler_ == SIG_IGN)
        std::signal(SIGINT, SIG_IGN);
}

TerminalInterface::~TerminalInterface() {
    clearProgress();
    std::signal(SIGINT, previousHandler_);
    platform::installUserInterface(previous_);
}

bool TerminalInterface::interrupted() noexcept {
    return interruptedBy != 0;
}

int TerminalInterface::interruptingSignal() noexcept {
    return interruptedBy;
}

void TerminalInterface::heedTermination() noexcept {
    if (std::signal(SIGTERM, onInterrupt) == SIG_IGN)
        std::signal(SIGTERM, SIG_IGN);
}

void TerminalInterface::outliveInterrupts(bool outlive) noexcept {
    outlivesInterrupts = outlive ? 1 : 0;
    if (std::signal(SIGINT, onInterrupt) == SIG_IGN)
        std::signal(SIGINT, SIG_IGN);
}

void TerminalInterface::showProgress(const std::string& line) {
    if (!showsProgress_)
        return;
    const auto width = static_cast<std::size_t>(std::max(platform::terminalWidth(stderr) - 1, 1));
    // Back to the start of the line, then erase what the longer line before has left.
    print("\r" + fittedText(line, width) + "\x1B[K");
    lineShown_ = true;
}

void TerminalInterface::clearProgress() {
    if (std::exchange(lineShown_, false))
        print("\r\x1B[K");
}

void TerminalInterface::makeRoomForOutput() {
    if (!outputIsTerminal_)
        return;
    clearProgress();
    showsProgress_ = false;
}

platform::MessageAnswer TerminalInterface::showMessage(const platform::MessageBox& box) {
    clearProgress();
    complain(onOneLine(box.text));
    return box.defaultAnswer;
}

void TerminalInterface::processMessages() {}

void TerminalInterface::beep() {
    if (showsProgress_)
        print("\a");
}

} // namespace ov::cli
