// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tests/temporary_store.h"

#include <array>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

// A folder of files as on a file server that dies and comes back, see bench/slow_store. Where it
// cannot be mounted the test is skipped:
//
//   if (!slow.isMounted())
//       GTEST_SKIP() << SlowStore::why;
//
// A call that nobody releases fails after half a minute, so that a test which waits for it ends;
// timedOut() tells then.

namespace ov::tests {

class SlowStore {
public:
    static constexpr const char* why = "needs FUSE: libfuse3-dev for the build, /dev/fuse to run";

    // Shows the folder of `store`, which outlives this.
    explicit SlowStore(const TemporaryStore& store) {
        std::array<int, 2> in{-1, -1};
        std::array<int, 2> out{-1, -1};
        if (pipe2(in.data(), O_CLOEXEC) != 0 || pipe2(out.data(), O_CLOEXEC) != 0)
            return;
        const std::string place = mountPoint_.folder().native();
        process_ = fork();
        if (process_ == 0) {
            dup2(in[0], STDIN_FILENO);
            dup2(out[1], STDOUT_FILENO);
            dup2(open("/dev/null", O_WRONLY), STDERR_FILENO);
            execl(program, program, store.folder().c_str(), place.c_str(), "--control", nullptr);
            _exit(127);
        }
        close(in[0]);
        close(out[1]);
        commands_ = in[1];
        answers_ = out[0];
        mounted_ = waitFor("ready");
    }
    ~SlowStore() {
        if (process_ > 0) {
            kill(process_, SIGTERM);
            waitpid(process_, nullptr, 0);
        }
        close(commands_);
        close(answers_);
    }

    bool isMounted() const { return mounted_; }
    // As those of TemporaryStore.
    std::string path(const std::string& name) const { return mountPoint_.path(name); }
    std::string directory(const std::string& name = {}) const {
        return mountPoint_.directory(name);
    }

    // Calls of this kind (look, list, open, read or any) on `path` ("/a/b") and below it do not
    // come back from now on.
    void hang(const std::string& kind = "any", const std::string& path = {}) {
        send("hang " + kind + " " + path);
    }
    void release() { send("release"); }

    // Whether a call hung since the last hang(). Waits for nothing.
    bool hasCaught() { return look("hanging "); }
    // Whether one hung for so long that it failed.
    bool timedOut() { return look("timed-out "); }

private:
#ifdef OV_SLOW_STORE_PROGRAM
    static constexpr const char* program = OV_SLOW_STORE_PROGRAM;
#else
    static constexpr const char* program = "/dev/null";
#endif

    void send(const std::string& command) {
        said_.clear();
        const std::string line = command + "\n";
        if (write(commands_, line.data(), line.size()) > 0)
            waitFor("done");
    }
    // False at the end of the answers.
    bool readMore() {
        std::array<char, 4096> piece{};
        const ssize_t got = read(answers_, piece.data(), piece.size());
        if (got > 0)
            said_.append(piece.data(), static_cast<std::size_t>(got));
        return got > 0;
    }
    bool holds(const std::string& word) const {
        return said_.find(word) != std::string::npos;
    }
    bool waitFor(const std::string& word) {
        while (!holds(word))
            if (!readMore())
                return false;
        return true;
    }
    bool look(const std::string& word) {
        pollfd answers{answers_, POLLIN, 0};
        while (poll(&answers, 1, 0) > 0 && readMore()) {
        }
        return holds(word);
    }

    TemporaryStore mountPoint_;
    pid_t process_ = -1;
    int commands_ = -1;
    int answers_ = -1;
    bool mounted_ = false;
    std::string said_;
};

} // namespace ov::tests
