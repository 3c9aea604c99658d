// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "platform/terminal/child_process.h"

#include "platform/posix/file_descriptor.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace ov::platform {

namespace {

// The program starts with the signals that ours was started with, but for the one that
// endWithoutLeftovers() ignores.
class SpawnAttributes {
public:
    SpawnAttributes() {
        posix_spawnattr_init(&attributes_);
        sigset_t ofOurs;
        sigemptyset(&ofOurs);
        sigaddset(&ofOurs, SIGXFSZ);
        posix_spawnattr_setsigdefault(&attributes_, &ofOurs);
        posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSIGDEF);
    }
    ~SpawnAttributes() { posix_spawnattr_destroy(&attributes_); }
    SpawnAttributes(const SpawnAttributes&) = delete;
    SpawnAttributes& operator=(const SpawnAttributes&) = delete;

    const posix_spawnattr_t* get() const noexcept { return &attributes_; }

private:
    posix_spawnattr_t attributes_{};
};

} // namespace

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
    while (waitpid(child, &status, 0) < 0)
        if (errno != EINTR)
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
