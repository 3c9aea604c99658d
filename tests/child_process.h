// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <csignal>
#include <sched.h>
#include <string>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

// Work that needs other rights or limits than the test, done in a process of its own.

namespace ov::tests {

// True when `work()` was true there.
template <typename Work>
bool isTrueInChild(Work work) {
    const pid_t child = fork();
    if (child == 0)
        _exit(work() ? 0 : 1);
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

constexpr uid_t nobody = 65534;

// Without rights on other people's files, also when the tests run as root.
template <typename Work>
bool isTrueUnprivileged(Work work) {
    return isTrueInChild([&work] {
        const bool dropped = geteuid() != 0 || (setresgid(nobody, nobody, nobody) == 0 &&
                                                setresuid(nobody, nobody, nobody) == 0);
        return dropped && work();
    });
}

// Where no file may grow beyond `bytes`, as on a full disk.
template <typename Work>
bool isTrueWithFileLimit(rlim_t bytes, Work work) {
    return isTrueInChild([bytes, &work] {
        const rlimit limit{bytes, bytes};
        return std::signal(SIGXFSZ, SIG_IGN) != SIG_ERR && setrlimit(RLIMIT_FSIZE, &limit) == 0 &&
               work();
    });
}

// What is mounted from now on goes with the process, which needs the right to that. `also` are
// further namespaces that it gets.
inline bool hasOwnMounts(int also = 0) {
    return unshare(CLONE_NEWNS | also) == 0 &&
           mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
}
inline bool mountEmpty(const std::string& native) {
    return mount("none", native.c_str(), "tmpfs", 0, nullptr) == 0;
}

} // namespace ov::tests
