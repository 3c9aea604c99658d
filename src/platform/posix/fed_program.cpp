// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "platform/posix/file_descriptor.h"
#include "platform/posix/spawned.h"
#include "platform/terminal/terminal.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <string_view>
#include <unistd.h>
#include <utility>
#include <vector>

namespace ov::platform {

namespace {

std::vector<char*> environmentWith(std::string& setting) {
    const std::string_view name = std::string_view(setting).substr(0, setting.find('=') + 1);
    std::vector<char*> variables;
    bool isSet = false;
    for (char** variable = environ; *variable != nullptr; ++variable) {
        isSet = isSet || std::string_view(*variable).starts_with(name);
        variables.push_back(*variable);
    }
    if (!isSet)
        variables.push_back(setting.data());
    variables.push_back(nullptr);
    return variables;
}

// Its number, or 0 with errno set. It reads from that end of a pipe.
pid_t spawn(std::string command, std::string setting, int input) {
    std::string shell = "/bin/sh";
    std::string option = "-c";
    const std::array<char*, 4> arguments{shell.data(), option.data(), command.data(), nullptr};
    const std::vector<char*> variables = environmentWith(setting);
    posix_spawn_file_actions_t files;
    posix_spawn_file_actions_init(&files);
    posix_spawn_file_actions_adddup2(&files, input, STDIN_FILENO);
    pid_t process = 0;
    const int error = posix_spawn(&process, shell.c_str(), &files, SpawnAttributes({SIGPIPE}).get(),
                                  arguments.data(), variables.data());
    posix_spawn_file_actions_destroy(&files);
    errno = error;
    return error == 0 ? process : 0;
}

} // namespace

Status FedProgram::start(const std::string& command, const std::string& setting) {
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0)
        return systemError(command);
    const FileDescriptor reading(ends[0]);
    FileDescriptor writing(ends[1]);
    const pid_t process = spawn(command, setting, reading.get());
    if (process == 0)
        return systemError(command);
    process_ = process;
    input_ = fdopen(writing.get(), "w");
    if (input_ == nullptr) {
        const Status why = systemError(command);
        writing.reset(); // it ends
        int ended = 0;
        static_cast<void>(waitFor(process, ended));
        return why;
    }
    static_cast<void>(writing.release()); // the stream closes it
    brokenPipe_ = std::signal(SIGPIPE, SIG_IGN);
    return {};
}

bool FedProgram::finish() noexcept {
    constexpr int notRun = 126; // or one more, says the shell
    if (input_ == nullptr)
        return true;
    static_cast<void>(std::fclose(std::exchange(input_, nullptr)));
    int ended = 0;
    static_cast<void>(waitFor(static_cast<pid_t>(process_), ended));
    std::signal(SIGPIPE, brokenPipe_);
    return !WIFEXITED(ended) || (WEXITSTATUS(ended) != notRun && WEXITSTATUS(ended) != notRun + 1);
}

} // namespace ov::platform
