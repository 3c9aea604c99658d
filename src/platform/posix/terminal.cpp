// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "platform/terminal/terminal.h"

#include <array>
#include <cstdlib>
#include <fcntl.h>
#include <string_view>
#include <sys/ioctl.h>
#include <unistd.h>

namespace ov::platform {

bool isTerminal(std::FILE* stream) noexcept {
    return isatty(fileno(stream)) == 1;
}

void keepStandardStreams() noexcept {
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        if (fcntl(stream, F_GETFD) < 0) // the lowest that is free; what used it failed, and does so
            static_cast<void>(open("/dev/null", stream == STDIN_FILENO ? O_WRONLY : O_RDONLY));
}

namespace {

winsize sizeOf(std::FILE* stream) noexcept {
    winsize size{};
    return ioctl(fileno(stream), TIOCGWINSZ, &size) == 0 ? size : winsize{};
}

} // namespace

int terminalWidth(std::FILE* stream) noexcept {
    constexpr int usual = 80;
    const int columns = sizeOf(stream).ws_col;
    return columns > 0 ? columns : usual;
}

int terminalHeight(std::FILE* stream) noexcept {
    constexpr int usual = 24;
    const int rows = sizeOf(stream).ws_row;
    return rows > 0 ? rows : usual;
}

std::string hostName() {
    std::array<char, 256> name{};
    return gethostname(name.data(), name.size() - 1) == 0 ? name.data() : "";
}

bool isCommand(const std::string& name) {
    if (name.find('/') != std::string::npos)
        return access(name.c_str(), X_OK) == 0;
    const char* const path = std::getenv("PATH");
    std::string_view rest = path == nullptr ? "/usr/bin:/bin" : path;
    for (bool more = true; more && !name.empty();) {
        const std::size_t colon = rest.find(':');
        std::string folder(rest.substr(0, colon));
        if (access(folder.append("/").append(name).c_str(), X_OK) == 0)
            return true;
        more = colon != std::string_view::npos;
        rest.remove_prefix(more ? colon + 1 : rest.size());
    }
    return false;
}

} // namespace ov::platform
