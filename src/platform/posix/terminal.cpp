// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "platform/terminal.h"

#include <sys/ioctl.h>
#include <unistd.h>

namespace ov::platform {

bool isTerminal(std::FILE* stream) noexcept {
    return isatty(fileno(stream)) == 1;
}

int terminalWidth(std::FILE* stream) noexcept {
    constexpr int usual = 80;
    winsize size{};
    const bool known = ioctl(fileno(stream), TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
    return known ? size.ws_col : usual;
}

} // namespace ov::platform
