// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// ovbench_status ROOT SHAPE THREADS TIMES
//
// Asks the kernel for the times of every folder of a tree, so many times, and prints how many it
// asked in all: the least that a search again can take. Each folder is asked through a handle of
// the one above. Their names are those of SHAPE, the same tree on a disk that is quick to list.

#include <condition_variable>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <fcntl.h>
#include <filesystem>
#include <memory>
#include <mutex>
#include <string>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>
#include <utility>
#include <vector>

namespace {

struct Folder {
    std::string name;
    std::vector<Folder> folders;
};

Folder read(const std::filesystem::path& path) {
    Folder folder{path.filename().native(), {}};
    for (const auto& entry : std::filesystem::directory_iterator(path))
        if (entry.is_directory())
            folder.folders.push_back(read(entry.path()));
    return folder;
}

class Handle {
public:
    explicit Handle(int handle) : handle_(handle) {}
    ~Handle() { close(handle_); }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;
    int get() const { return handle_; }

private:
    int handle_;
};

using HandlePtr = std::shared_ptr<const Handle>;

bool ask(int directory, const char* name, int flags) {
    struct statx info {};
    return statx(directory, name, AT_STATX_FORCE_SYNC | flags,
                 STATX_TYPE | STATX_INO | STATX_MTIME | STATX_CTIME, &info) == 0;
}

// What the threads share: the folders that are still to be asked, the newest first.
class Round {
public:
    Round(const Folder& root, const char* path) { add(root, nullptr, path); }

    void work() {
        std::unique_lock lock(mutex_);
        while (nextIsThere(lock)) {
            const Task task = std::move(tasks_.back());
            tasks_.pop_back();
            ++atWork_;
            lock.unlock();
            const HandlePtr opened = askOne(task);
            lock.lock();
            --atWork_;
            for (const Folder& folder : task.folder->folders)
                add(folder, opened, folder.name.c_str());
            if (tasks_.empty() && atWork_ == 0)
                changed_.notify_all();
        }
    }
    long asked() const { return asked_; }

private:
    struct Task {
        const Folder* folder;
        HandlePtr above;
        const char* path; // in it
    };

    void add(const Folder& folder, HandlePtr above, const char* path) {
        tasks_.push_back({&folder, std::move(above), path});
        ++asked_;
        changed_.notify_one();
    }
    bool nextIsThere(std::unique_lock<std::mutex>& lock) {
        changed_.wait(lock, [this] { return !tasks_.empty() || atWork_ == 0; });
        return !tasks_.empty();
    }
    static HandlePtr askOne(const Task& task) {
        const int above = task.above ? task.above->get() : AT_FDCWD;
        HandlePtr opened;
        if (!task.folder->folders.empty())
            opened = std::make_shared<Handle>(openat(above, task.path, O_PATH | O_CLOEXEC));
        if (opened ? !ask(opened->get(), "", AT_EMPTY_PATH) : !ask(above, task.path, 0))
            std::perror(task.path);
        return opened;
    }

    std::mutex mutex_;
    std::condition_variable changed_;
    std::vector<Task> tasks_;
    int atWork_ = 0;
    long asked_ = 0;
};

long askAll(const Folder& root, const char* path, int threads) {
    Round round(root, path);
    std::vector<std::jthread> others;
    for (int more = threads - 1; more > 0; --more)
        others.emplace_back([&round] { round.work(); });
    round.work();
    others.clear();
    return round.asked();
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 5) {
        std::fputs("usage: ovbench_status ROOT SHAPE THREADS TIMES\n", stderr);
        return 2;
    }
    try {
        const Folder root = read(argv[2]);
        long asked = 0;
        for (int left = std::atoi(argv[4]); left > 0; --left)
            asked += askAll(root, argv[1], std::atoi(argv[3]));
        std::printf("%ld\n", asked);
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "ovbench_status: %s\n", error.what());
        return 1;
    }
}
