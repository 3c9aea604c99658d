// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// ovbench_slow_store DIRECTORY MOUNT_POINT [--delay-ms N] [--control]
//
// Shows a directory, for reading, as a busy or a dead file server would: every call takes its time
// or does not come back. The kernel keeps nothing of it, so that each call is made. Prints "ready"
// once it is mounted and unmounts when it is ended, by SIGTERM too.
//
// With --control commands come line by line on the standard input, each answered by "done"; its end
// ends the program:
//
//   delay N               milliseconds that every call takes
//   hang [KIND [PATH]]    calls of that kind on PATH ("/a/b") and below do not come back; KIND is
//                         look, list, open, read or any. Each says "hanging KIND PATH", and after
//                         half a minute "timed-out KIND PATH", when it fails.
//   release               all of them go on
//
// With --control it also ends with the thread that started it: while calls hang, a process that has
// died keeps its end of the input open.

#define FUSE_USE_VERSION 312

#include "bench/slow_store/gate.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <fuse3/fuse.h>
#include <iostream>
#include <poll.h>
#include <sstream>
#include <sys/prctl.h>
#include <sys/signalfd.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

namespace {

using ov::slow_store::Gate;

struct Store {
    std::string directory;
    Gate gate;

    std::string real(const char* path) const { return directory + path; }
};

Store& store() {
    static Store only;
    return only;
}

int answer(int result) {
    return result < 0 ? -errno : 0;
}

void* atStart(fuse_conn_info* connection, fuse_config* config) {
    config->use_ino = 1;
    config->entry_timeout = 0;
    config->attr_timeout = 0;
    config->negative_timeout = 0;
    // Not hidden behind the listing: file servers differ there, and each call shall be one.
    connection->want &= ~static_cast<unsigned>(FUSE_CAP_READDIRPLUS);
    connection->max_background = 256;
    return nullptr;
}

int getAttributes(const char* path, struct stat* info, fuse_file_info* /*file*/) {
    if (!store().gate.pass("look", path))
        return -ETIMEDOUT;
    return answer(lstat(store().real(path).c_str(), info));
}

int readLink(const char* path, char* target, std::size_t room) {
    if (!store().gate.pass("look", path))
        return -ETIMEDOUT;
    const ssize_t size = readlink(store().real(path).c_str(), target, room - 1);
    if (size >= 0)
        target[size] = '\0';
    return answer(static_cast<int>(size));
}

int systemStatus(const char* path, struct statvfs* info) {
    if (!store().gate.pass("look", path))
        return -ETIMEDOUT;
    return answer(statvfs(store().real(path).c_str(), info));
}

DIR* directoryOf(const fuse_file_info& file) {
    return reinterpret_cast<DIR*>(file.fh); // NOLINT(performance-no-int-to-ptr): all that fits
}

int openDirectory(const char* path, fuse_file_info* file) {
    if (!store().gate.pass("list", path))
        return -ETIMEDOUT;
    DIR* directory = opendir(store().real(path).c_str());
    file->fh = reinterpret_cast<std::uintptr_t>(directory);
    return directory != nullptr ? 0 : -errno;
}

// Gives as much as the kernel has room for, which asks again for the rest: each a call of its own.
int listDirectory(const char* path, void* target, fuse_fill_dir_t fill, off_t from,
                  fuse_file_info* file, fuse_readdir_flags /*flags*/) {
    if (!store().gate.pass("list", path))
        return -ETIMEDOUT;
    DIR* directory = directoryOf(*file);
    if (from != telldir(directory))
        seekdir(directory, from);
    for (;;) {
        errno = 0;
        const dirent* entry = readdir(directory); // NOLINT(concurrency-mt-unsafe): one at a time
        if (entry == nullptr)
            return -errno;
        struct stat info {};
        info.st_ino = entry->d_ino;
        info.st_mode = static_cast<mode_t>(DTTOIF(entry->d_type));
        if (fill(target, entry->d_name, &info, telldir(directory), fuse_fill_dir_flags{}) != 0)
            return 0;
    }
}

int closeDirectory(const char* /*path*/, fuse_file_info* file) {
    closedir(directoryOf(*file));
    return 0;
}

int openFile(const char* path, fuse_file_info* file) {
    if (!store().gate.pass("open", path))
        return -ETIMEDOUT;
    const int handle = open(store().real(path).c_str(), file->flags & ~O_NOFOLLOW);
    file->fh = static_cast<std::uint64_t>(handle);
    return answer(handle);
}

int readFile(const char* path, char* target, std::size_t count, off_t place, fuse_file_info* file) {
    if (!store().gate.pass("read", path))
        return -ETIMEDOUT;
    const ssize_t got = pread(static_cast<int>(file->fh), target, count, place);
    return got < 0 ? -errno : static_cast<int>(got);
}

int closeFile(const char* /*path*/, fuse_file_info* file) {
    close(static_cast<int>(file->fh));
    return 0;
}

fuse_operations operations() {
    fuse_operations all{};
    all.init = atStart;
    all.getattr = getAttributes;
    all.readlink = readLink;
    all.statfs = systemStatus;
    all.opendir = openDirectory;
    all.readdir = listDirectory;
    all.releasedir = closeDirectory;
    all.open = openFile;
    all.read = readFile;
    all.release = closeFile;
    return all;
}

void say(const char* text) {
    std::printf("%s\n", text);
    std::fflush(stdout);
}

void obey(const std::string& line) {
    std::istringstream words(line);
    std::string command;
    words >> command;
    if (command == "delay") {
        int delay = 0;
        words >> delay;
        store().gate.setDelay(std::chrono::milliseconds(delay));
    } else if (command == "hang") {
        std::string kind = "any";
        std::string path;
        words >> kind >> std::ws;
        std::getline(words, path);
        store().gate.hang(kind, path);
    } else if (command == "release") {
        store().gate.release();
    } else {
        std::fprintf(stderr, "ovbench_slow_store: unknown command: %s\n", line.c_str());
        return;
    }
    say("done");
}

// False at the end of the input.
bool obeyInput(std::string& rest) {
    std::array<char, 4096> piece{};
    const ssize_t got = read(STDIN_FILENO, piece.data(), piece.size());
    if (got <= 0)
        return got < 0 && errno == EINTR;
    rest.append(piece.data(), static_cast<std::size_t>(got));
    for (std::size_t end = rest.find('\n'); end != std::string::npos; end = rest.find('\n')) {
        obey(rest.substr(0, end));
        rest.erase(0, end + 1);
    }
    return true;
}

// Waits for the end and makes it. Calls that hang do not hold it up: the kernel answers them once
// the process is gone.
[[noreturn]] void serveControl(fuse* session, int signals, bool control) {
    std::array<pollfd, 2> waiting{{{signals, POLLIN, 0}, {control ? STDIN_FILENO : -1, POLLIN, 0}}};
    std::string rest;
    do
        poll(waiting.data(), waiting.size(), -1);
    while (waiting[0].revents == 0 && (waiting[1].revents == 0 || obeyInput(rest)));
    fuse_unmount(session);
    _Exit(0);
}

// Blocked before any thread starts: they come by the descriptor alone.
int endingSignals() {
    sigset_t ending;
    sigemptyset(&ending);
    for (const int signal : {SIGTERM, SIGINT, SIGHUP})
        sigaddset(&ending, signal);
    pthread_sigmask(SIG_BLOCK, &ending, nullptr);
    return signalfd(-1, &ending, SFD_CLOEXEC);
}

int serve(fuse* session, bool control, int signals) {
    say("ready");
    std::thread([=] { serveControl(session, signals, control); }).detach();
    // A thread for every call that waits, more than any client makes at once.
    constexpr unsigned mostThreads = 256;
    fuse_loop_config* config = fuse_loop_cfg_create();
    fuse_loop_cfg_set_max_threads(config, mostThreads);
    fuse_loop_cfg_set_idle_threads(config, mostThreads);
    const int result = fuse_loop_mt(session, config);
    fuse_loop_cfg_destroy(config);
    return result == 0 ? 0 : 1;
}

struct Options {
    const char* directory = nullptr;
    const char* mountPoint = nullptr;
    int delay = 0;
    bool control = false;
};

bool readOptions(int argc, char** argv, Options& options) {
    for (int i = 1; i < argc; ++i)
        if (std::strcmp(argv[i], "--control") == 0)
            options.control = true;
        else if (std::strcmp(argv[i], "--delay-ms") == 0 && i + 1 < argc)
            options.delay = std::atoi(argv[++i]); // NOLINT(cert-err34-c): 0 is no delay
        else if (options.directory == nullptr)
            options.directory = argv[i];
        else
            options.mountPoint = argv[i];
    return options.mountPoint != nullptr;
}

} // namespace

int main(int argc, char** argv) {
    Options options;
    if (!readOptions(argc, argv, options)) {
        std::fputs("usage: ovbench_slow_store DIRECTORY MOUNT_POINT [--delay-ms N] [--control]\n",
                   stderr);
        return 2;
    }
    char* real = realpath(options.directory, nullptr); // it lives as long as we do
    if (real == nullptr) {
        std::perror(options.directory);
        return 1;
    }
    store().directory = real;
    store().gate.setDelay(std::chrono::milliseconds(options.delay));
    const int signals = endingSignals();
    if (options.control)
        prctl(PR_SET_PDEATHSIG, SIGTERM);

    // The helper that unmounts stays, and does so even after a SIGKILL.
    fuse_args arguments{};
    for (const char* word :
         {"ovbench_slow_store", "-o", "ro,auto_unmount,fsname=ovbench_slow_store"})
        fuse_opt_add_arg(&arguments, word);
    const fuse_operations calls = operations();
    fuse* session = fuse_new(&arguments, &calls, sizeof calls, nullptr);
    if (session == nullptr || fuse_mount(session, options.mountPoint) != 0)
        return 1; // it has told why
    return serve(session, options.control, signals);
}
