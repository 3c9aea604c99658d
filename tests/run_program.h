// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <functional>
#include <linux/capability.h>
#include <map>
#include <poll.h>
#include <pty.h>
#include <stdexcept>
#include <string>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>
#include <vector>

// Runs the real program as a shell would, and gives back all that it said.

namespace ov::tests {

struct ProgramRun {
    std::vector<std::string> arguments = {};
    std::map<std::string, std::string> environment = {}; // added to that of the tests
    std::string outputFile = {}; // takes the standard output, which is then not captured
    // What is done once, as soon as the program has said this; one after the other.
    std::vector<std::pair<std::string, std::function<void()>>> steps = {};
    std::string interruptAt = {}; // Ctrl-C is pressed once, as soon as the program has said this
    int interruptBy = SIGINT;
    std::string typeAt = {};  // `typed` is typed once, as soon as the program has said this
    std::string typed = {};   // on a terminal only
    bool onTerminal = false;  // all streams are one terminal; `output` has what it was sent
    unsigned short rows = 50; // of the terminal
    unsigned short columns = 200;
    bool withRights = true;  // false: file permissions count, for root too
    bool withThreads = true; // false: the system has no room for the stack of another one
    rlim_t stack = 0;        // else that of the tests
    rlim_t longestFile = RLIM_INFINITY; // no file may grow beyond, as on a full disk
};

struct ProgramResult {
    int exitCode = -1; // -signal when one ended the program
    std::string output;
    std::string errors;
};

namespace run_program {

constexpr std::chrono::seconds hangsAfter{120};

// What runs in the child; a failure here shows as exit code 127.
[[noreturn]] inline void become(ProgramRun run, std::string program) {
    std::vector<char*> arguments = {program.data()};
    for (std::string& argument : run.arguments)
        arguments.push_back(argument.data());
    arguments.push_back(nullptr);
    for (const auto& [name, value] : run.environment)
        setenv(name.c_str(), value.c_str(), 1);
    for (const int one : {SIGINT, SIGHUP, SIGQUIT, SIGTERM})
        std::signal(one, SIG_DFL); // whatever the tests were started with
    const rlimit limit{run.longestFile, run.longestFile};
    bool ready = setrlimit(RLIMIT_FSIZE, &limit) == 0;
    constexpr rlim_t tooLarge = rlim_t{1} << 47U;
    if (const rlimit stack{tooLarge, tooLarge}; !run.withThreads)
        ready = ready && setrlimit(RLIMIT_STACK, &stack) == 0;
    if (const rlimit stack{run.stack, run.stack}; run.stack > 0)
        ready = ready && setrlimit(RLIMIT_STACK, &stack) == 0;
    if (!run.outputFile.empty())
        ready = ready && dup2(open(run.outputFile.c_str(), O_WRONLY | O_CREAT, 0600), 1) == 1;
    if (!run.withRights && geteuid() == 0)
        ready = ready && prctl(PR_CAPBSET_DROP, CAP_DAC_OVERRIDE) == 0 &&
                prctl(PR_CAPBSET_DROP, CAP_DAC_READ_SEARCH) == 0;
    if (ready)
        execv(program.c_str(), arguments.data());
    _exit(127);
}

struct Child {
    pid_t id = -1;
    std::array<int, 2> streams{-1, -1}; // output and errors; -1 once they have ended
};

inline Child startOnTerminal(const ProgramRun& run, const std::string& program) {
    Child child;
    const winsize size{run.rows, run.columns, 0, 0};
    child.id = forkpty(child.streams.data(), nullptr, nullptr, &size);
    if (child.id == 0)
        become(run, program);
    return child;
}

inline Child startOnPipes(const ProgramRun& run, const std::string& program) {
    std::array<int, 2> output{};
    std::array<int, 2> errors{};
    if (pipe2(output.data(), O_CLOEXEC) != 0 || pipe2(errors.data(), O_CLOEXEC) != 0)
        throw std::runtime_error("no pipe");
    const pid_t id = fork();
    if (id == 0) {
        dup2(open("/dev/null", O_RDONLY), 0);
        dup2(output[1], 1);
        dup2(errors[1], 2);
        become(run, program);
    }
    close(output[1]);
    close(errors[1]);
    return {id, {output[0], errors[0]}};
}

// Appends what has come; closes the stream at its end.
inline void readSome(int& stream, std::string& text) {
    std::array<char, 65536> buffer; // NOLINT(*-member-init): filled by read
    const ssize_t got = read(stream, buffer.data(), buffer.size());
    if (got > 0)
        text.append(buffer.data(), static_cast<std::size_t>(got));
    else if (got == 0 || errno != EINTR) // a terminal ends with an error
        close(std::exchange(stream, -1));
}

// The thread sanitizer hands signals on late, and one in a hundred never.
#ifdef __SANITIZE_THREAD__
constexpr bool signalsGetLost = true;
#else
constexpr bool signalsGetLost = false;
#endif

inline void collect(Child& child, ProgramRun run, ProgramResult& result) {
    const auto deadline = std::chrono::steady_clock::now() + hangsAfter;
    auto pressAgain = deadline;
    const auto press = [&] {
        kill(child.id, run.interruptBy);
        pressAgain =
            signalsGetLost ? std::chrono::steady_clock::now() + std::chrono::seconds(15) : deadline;
    };
    const auto once = [&result](std::string& text, const std::function<void()>& act) {
        if (!text.empty() && (result.output.find(text) != std::string::npos ||
                              result.errors.find(text) != std::string::npos)) {
            text.clear();
            act();
        }
    };
    while (child.streams != std::array<int, 2>{-1, -1}) {
        std::array<pollfd, 2> waiting{
            {{child.streams[0], POLLIN, 0}, {child.streams[1], POLLIN, 0}}};
        poll(waiting.data(), waiting.size(), 1000);
        if (waiting[0].revents != 0)
            readSome(child.streams[0], result.output);
        if (waiting[1].revents != 0)
            readSome(child.streams[1], result.errors);
        once(run.interruptAt, press);
        if (std::chrono::steady_clock::now() > pressAgain)
            press();
        for (auto& [text, act] : run.steps) {
            once(text, act);
            if (!text.empty())
                break;
        }
        once(run.typeAt,
             [&] { EXPECT_GT(write(child.streams[0], run.typed.data(), run.typed.size()), 0); });
        if (std::chrono::steady_clock::now() > deadline) {
            ADD_FAILURE() << "the program hangs";
            kill(child.id, SIGKILL);
            return;
        }
    }
}

} // namespace run_program

inline ProgramResult runProgram(const std::string& program, const ProgramRun& run) {
    run_program::Child child = run.onTerminal ? run_program::startOnTerminal(run, program)
                                              : run_program::startOnPipes(run, program);
    if (child.id < 0)
        throw std::runtime_error("cannot start a process");
    ProgramResult result;
    run_program::collect(child, run, result);
    int status = 0;
    waitpid(child.id, &status, 0);
    result.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
    return result;
}

// For EXPECT_PRED2, which shows both.
inline bool holds(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

// What a shell's command prints.
inline std::string shellOutput(const std::string& command) {
    return runProgram("/bin/sh", {.arguments = {"-c", command}}).output;
}

} // namespace ov::tests
