// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "platform/terminal/folder_watch.h"

#include "platform/directories.h"
#include "platform/files.h"
#include "platform/posix/file_descriptor.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <map>
#include <poll.h>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <utility>

namespace ov::platform {

namespace {

constexpr std::uint32_t watched = IN_CLOSE_WRITE | IN_MOVED_TO | IN_CREATE | IN_MOVED_FROM |
                                  IN_DELETE | IN_MOVE_SELF | IN_ONLYDIR | IN_EXCL_UNLINK;

// Only on a file system of this machine does the system learn of every change.
bool isOurs(const std::string& directory) {
    DirectoryReader reader;
    return reader.open(directory).ok() && reader.times() == DirectoryTimes::ofOurClock;
}

// The system's words for these speak of disks and of open files.
Status refusal(const std::string& native) {
    constexpr const char* few = "no more can be watched, the system's limit is ";
    switch (errno) {
    case ENOSPC:
        return {errno, native, std::string(few) + "fs.inotify.max_user_watches"};
    case EMFILE:
        return {errno, native, std::string(few) + "fs.inotify.max_user_instances"};
    default:
        return systemError(native);
    }
}

// A link is complete as soon as it is there; nobody closes it.
FolderEvent::Kind kindOfNew(const std::string& path) {
    struct stat info {};
    if (lstat(toNativePath(path).c_str(), &info) != 0)
        return FolderEvent::Kind::gone;
    if (S_ISLNK(info.st_mode) && directoryExists(path))
        return FolderEvent::Kind::folder;
    return S_ISLNK(info.st_mode) || info.st_nlink > 1 ? FolderEvent::Kind::arrived
                                                      : FolderEvent::Kind::begun;
}

FolderEvent::Kind kindOf(const inotify_event& event, const std::string& path) {
    if ((event.mask & (IN_MOVED_FROM | IN_DELETE)) != 0)
        return FolderEvent::Kind::gone;
    if ((event.mask & IN_ISDIR) != 0)
        return FolderEvent::Kind::folder;
    if ((event.mask & IN_CREATE) != 0)
        return kindOfNew(path);
    return directoryExists(path) ? FolderEvent::Kind::folder : FolderEvent::Kind::arrived;
}

} // namespace

struct FolderWatch::State {
    FileDescriptor inotify{inotify_init1(IN_NONBLOCK | IN_CLOEXEC)};
    int problem = inotify.valid() ? 0 : errno;
    // By what inotify calls them: one directory may be reached in several ways.
    std::map<int, std::vector<std::string>> directories;

    void append(const inotify_event& event, std::vector<FolderEvent>& events);
};

FolderWatch::FolderWatch() : state_(std::make_unique<State>()) {}

FolderWatch::~FolderWatch() = default;

FolderWatch::Added FolderWatch::add(const std::string& directory, Status& why) {
    const std::string native = toNativePath(directory);
    const int number = inotify_add_watch(state_->inotify.get(), native.c_str(), watched);
    if (number < 0) {
        errno = state_->problem != 0 ? state_->problem : errno;
        if (errno == ENOENT || errno == ENOTDIR)
            return Added::gone;
        why = refusal(native);
        return Added::refused;
    }
    std::vector<std::string>& ways = state_->directories[number];
    if (std::ranges::find(ways, directory) != ways.end())
        return Added::before;
    ways.push_back(directory);
    return isOurs(directory) ? Added::now : Added::elsewhere;
}

void FolderWatch::State::append(const inotify_event& event, std::vector<FolderEvent>& events) {
    if ((event.mask & (IN_Q_OVERFLOW | IN_IGNORED)) != 0)
        events.push_back({FolderEvent::Kind::lost, {}, {}});
    const auto found = directories.find(event.wd);
    if (found == directories.end())
        return;
    if ((event.mask & IN_IGNORED) != 0) {
        directories.erase(found);
        return;
    }
    if ((event.mask & IN_MOVE_SELF) != 0) { // it has another path, or none that is known
        inotify_rm_watch(inotify.get(), event.wd);
        return;
    }
    for (const std::string& directory : found->second)
        events.push_back({kindOf(event, directory + event.name), directory, event.name});
}

std::vector<FolderEvent> FolderWatch::wait(std::chrono::milliseconds longest) {
    std::vector<FolderEvent> events;
    pollfd waiting{state_->inotify.get(), POLLIN, 0};
    if (poll(&waiting, 1, static_cast<int>(longest.count())) <= 0)
        return events;
    constexpr std::size_t room = 65536;
    alignas(inotify_event) std::array<char, room> buffer; // NOLINT(*-member-init): filled by read
    const ssize_t got = read(state_->inotify.get(), buffer.data(), buffer.size());
    for (ssize_t place = 0; place < got;) {
        const auto* event = reinterpret_cast<const inotify_event*>(buffer.data() + place);
        state_->append(*event, events);
        place += static_cast<ssize_t>(sizeof(inotify_event) + event->len);
    }
    return events;
}

} // namespace ov::platform
