// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// ovbench_list ROOT
//
// Lists a tree with nothing but the kernel's directory calls and prints the number of entries:
// the least that any search of it can take.

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <string>
#include <sys/syscall.h>
#include <unistd.h>
#include <vector>

namespace {

constexpr std::size_t bufferSize = std::size_t{256} * 1024;

struct Tree {
    std::vector<std::string> folders; // still to be listed
    std::vector<char> buffer = std::vector<char>(bufferSize);
    std::int64_t entries = 0;
};

void takeEntries(const std::string& folder, std::size_t size, Tree& tree) {
    for (std::size_t at = 0; at < size;) {
        const auto* entry = reinterpret_cast<const dirent64*>(tree.buffer.data() + at);
        const char* name = entry->d_name;
        at += entry->d_reclen;
        if (std::strcmp(name, ".") == 0 || std::strcmp(name, "..") == 0)
            continue;
        ++tree.entries;
        if (entry->d_type == DT_DIR)
            tree.folders.push_back(folder + '/' + name);
    }
}

bool listFolder(const std::string& folder, Tree& tree) {
    const int handle = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (handle < 0)
        return false;
    long size = 0;
    while ((size = syscall(SYS_getdents64, handle, tree.buffer.data(), bufferSize)) > 0)
        takeEntries(folder, static_cast<std::size_t>(size), tree);
    close(handle);
    return size == 0;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fputs("usage: ovbench_list ROOT\n", stderr);
        return 2;
    }
    Tree tree;
    tree.folders.emplace_back(argv[1]);
    while (!tree.folders.empty()) {
        const std::string folder = std::move(tree.folders.back());
        tree.folders.pop_back();
        if (!listFolder(folder, tree)) {
            std::fprintf(stderr, "%s: %s\n", folder.c_str(), std::strerror(errno));
            return 1;
        }
    }
    std::printf("%lld\n", static_cast<long long>(tree.entries));
    return 0;
}
