// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "platform/terminal/child_process.h"

#include "platform/posix/file_descriptor.h"
#include "platform/posix/spawned.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <unistd.h>

namespace ov::platform {

Status runProgram(const std::vector<std::string>& arguments, int& exitCode) {
    std::vector<std::string> copies = arguments;
    std::vector<char*> pointers;
    for (std::string& argument : copies)
        pointers.push_back(argument.data());
    pointers.push_back(nullptr);
    pid_t child = -1;
    errno = posix_spawnp(&child, pointers.front(), nullptr, SpawnAttributes().get(),
                         pointers.data(), environ);
    if (errno != 0)
        return systemError(arguments.front());
    int status = 0;
    if (!waitFor(child, status))
        return systemError(arguments.front());
    constexpr int bySignal = 128;
    exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : bySignal + WTERMSIG(status);
    return {};
}

void learnOfChildren() {
    std::signal(SIGCHLD, SIG_DFL);
}

std::size_t roomForArguments() {
    constexpr std::size_t spare = 4096; // POSIX wants 2048 left; the program's path counts too
    constexpr std::size_t least = 4096;
    std::size_t taken = spare;
    for (char** variable = environ; *variable != nullptr; ++variable)
        taken += roomOfArgument(*variable);
    const long most = sysconf(_SC_ARG_MAX);
    const std::size_t all = most > 0 ? static_cast<std::size_t>(most) : least;
    return std::max(all, taken + least) - taken;
}

} // namespace ov::platform
