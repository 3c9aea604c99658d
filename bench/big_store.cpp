// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// ovbench_store DIR [--count N] [--folders F] [--seed S]
//
// Makes a big store of empty dictations: only their names matter to a search. Folders lie two
// and three deep, a hundred in each house: "House 07/Ward 42" and "House 07/Ward 42/ERL".

#include "bench_main.h"
#include "demo/demo_names.h"

#include <CLI/CLI.hpp>

#include <array>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <stdexcept>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr int foldersPerHouse = 100;

// Every measurement sees the same names.
constexpr ov::platform::DateTime storeDay{2026, 11, 21, 0, 0, 0};

[[noreturn]] void fail(const std::string& path) {
    throw std::runtime_error(path + ": " + std::strerror(errno));
}

void makeFolder(const std::string& path) {
    if (mkdir(path.c_str(), 0777) != 0 && errno != EEXIST)
        fail(path);
}

std::string numbered(const char* word, int number) {
    std::array<char, 32> text{};
    static_cast<void>(std::snprintf(text.data(), text.size(), "/%s %02d", word, number));
    return text.data();
}

std::string makeStoreFolder(const std::string& root, int index) {
    const int inHouse = index % foldersPerHouse;
    std::string folder = root + numbered("House", index / foldersPerHouse);
    makeFolder(folder);
    folder += numbered("Ward", inHouse / 2);
    makeFolder(folder);
    if (inHouse % 2 != 0) {
        folder += "/ERL";
        makeFolder(folder);
    }
    return folder;
}

void fillFolder(const std::string& folder, ov::demo::DemoNames& names, ov::demo::DemoTrade trade,
                std::int64_t count) {
    const int directory = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (directory < 0)
        fail(folder);
    for (; count > 0; --count) {
        const std::string name = names.next(trade).fileName;
        const int file =
            openat(directory, name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (file < 0)
            fail(name);
        close(file);
    }
    close(directory);
}

void makeStore(const std::string& root, std::int64_t count, int folders, std::uint32_t seed) {
    ov::demo::DemoNames names(seed, storeDay);
    makeFolder(root);
    for (int i = 0; i < folders; ++i)
        fillFolder(makeStoreFolder(root, i), names, static_cast<ov::demo::DemoTrade>(i % 4),
                   count * (i + 1) / folders - count * i / folders);
}

int run(int argc, char** argv) {
    std::string root;
    std::int64_t count = 1'000'000;
    int folders = 5'000;
    std::uint32_t seed = 1;
    CLI::App app("Makes a big store of empty dictations to measure with.", "ovbench_store");
    app.add_option("DIR", root, "the store, missing or empty")->required();
    app.add_option("--count", count, "dictations")->check(CLI::Range(0, 10'000'000));
    app.add_option("--folders", folders, "folders that hold them")->check(CLI::Range(1, 100'000));
    app.add_option("--seed", seed, "another seed, other names");
    CLI11_PARSE(app, argc, argv);
    makeStore(root, count, folders, seed);
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    return ov::bench::runToEnd("ovbench_store", run, argc, argv);
}
