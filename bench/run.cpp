// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// ovbench_run COMMAND [ARGUMENT]...
//
// Runs a command with its output thrown away and prints its wall time in microseconds and its
// peak memory in KiB. Ends with the command's exit code, 127 when it could not be started or
// did not end by itself.

#include <chrono>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr int failed = 127;

int spawn(char** command, pid_t& child) {
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    const int error = posix_spawnp(&child, command[0], &actions, nullptr, command, environ);
    posix_spawn_file_actions_destroy(&actions);
    return error;
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        std::fputs("usage: ovbench_run COMMAND [ARGUMENT]...\n", stderr);
        return failed;
    }
    const auto start = std::chrono::steady_clock::now();
    pid_t child = 0;
    if (const int error = spawn(argv + 1, child); error != 0) {
        std::fprintf(stderr, "ovbench_run: %s: %s\n", argv[1], std::strerror(error));
        return failed;
    }
    int status = 0;
    rusage usage{};
    if (wait4(child, &status, 0, &usage) != child)
        return failed;
    const std::chrono::duration<double, std::micro> taken =
        std::chrono::steady_clock::now() - start;
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-union-access): the C library's way to pad
    std::printf("%.0f %ld\n", taken.count(), usage.ru_maxrss);
    return WIFEXITED(status) ? WEXITSTATUS(status) : failed;
}
