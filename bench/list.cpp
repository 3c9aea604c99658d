// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// ovbench_list ROOT [THREADS]
//
// Lists a tree with nothing but the kernel's directory calls and prints the number of entries:
// the least that any search of it can take with so many threads (1).

#include <cerrno>
#include <condition_variable>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <mutex>
#include <string>
#include <sys/syscall.h>
#include <thread>
#include <unistd.h>
#include <utility>
#include <vector>

namespace {

constexpr std::size_t bufferSize = std::size_t{256} * 1024;

struct Listing {
    std::vector<std::string> folders;
    std::int64_t entries = 0;
    bool failed = false;
};

void takeEntries(const std::string& folder, const std::vector<char>& buffer, std::size_t size,
                 Listing& listing) {
    for (std::size_t at = 0; at < size;) {
        const auto* entry = reinterpret_cast<const dirent64*>(buffer.data() + at);
        const char* name = entry->d_name;
        at += entry->d_reclen;
        if (std::strcmp(name, ".") == 0 || std::strcmp(name, "..") == 0)
            continue;
        ++listing.entries;
        if (entry->d_type == DT_DIR)
            listing.folders.push_back(folder + '/' + name);
    }
}

Listing listFolder(const std::string& folder, std::vector<char>& buffer) {
    Listing listing;
    const int handle = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    long size = handle < 0 ? -1 : 0;
    while (handle >= 0 && (size = syscall(SYS_getdents64, handle, buffer.data(), bufferSize)) > 0)
        takeEntries(folder, buffer, static_cast<std::size_t>(size), listing);
    listing.failed = size < 0;
    if (listing.failed)
        std::fprintf(stderr, "%s: %s\n", folder.c_str(), std::strerror(errno));
    if (handle >= 0)
        close(handle);
    return listing;
}

// What the threads share: the folders that are still to be listed, the newest first.
class Tree {
public:
    explicit Tree(const char* root) : folders_{root} {}

    void list() {
        std::vector<char> buffer(bufferSize);
        std::unique_lock lock(mutex_);
        while (nextIsThere(lock)) {
            const std::string folder = std::move(folders_.back());
            folders_.pop_back();
            ++atWork_;
            lock.unlock();
            Listing listing = listFolder(folder, buffer);
            lock.lock();
            --atWork_;
            take(std::move(listing));
        }
    }
    bool failed() const { return failed_; }
    std::int64_t entries() const { return entries_; }

private:
    bool nextIsThere(std::unique_lock<std::mutex>& lock) {
        changed_.wait(lock, [this] { return failed_ || !folders_.empty() || atWork_ == 0; });
        return !failed_ && !folders_.empty();
    }
    void take(Listing listing) {
        failed_ = failed_ || listing.failed;
        entries_ += listing.entries;
        for (std::string& folder : listing.folders) {
            folders_.push_back(std::move(folder));
            changed_.notify_one();
        }
        if (atWork_ == 0 || failed_)
            changed_.notify_all();
    }

    std::mutex mutex_;
    std::condition_variable changed_;
    std::vector<std::string> folders_;
    int atWork_ = 0;
    std::int64_t entries_ = 0;
    bool failed_ = false;
};

} // namespace

int main(int argc, char** argv) {
    if (argc < 2 || argc > 3) {
        std::fputs("usage: ovbench_list ROOT [THREADS]\n", stderr);
        return 2;
    }
    Tree tree(argv[1]);
    std::vector<std::thread> others;
    for (int more = argc > 2 ? std::atoi(argv[2]) - 1 : 0; more > 0; --more)
        others.emplace_back([&tree] { tree.list(); });
    tree.list();
    for (std::thread& other : others)
        other.join();
    std::printf("%lld\n", static_cast<long long>(tree.entries()));
    return tree.failed() ? 1 : 0;
}
