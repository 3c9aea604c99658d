// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "platform/terminal/folder_watch.h"

#include "platform/directories.h"
#include "platform/files.h"
#include "platform/posix/watch/fanotify_watch.h"
#include "platform/posix/watch/inotify_watch.h"
#include "platform/posix/watch/mount_watch.h"
#include "platform/posix/watch/new_entry.h"

#include <array>
#include <poll.h>
#include <sys/stat.h>
#include <utility>

namespace ov::platform {

namespace {

// Only on a file system of this machine does the system learn of every change.
bool isOurs(const std::string& directory) {
    DirectoryReader reader;
    return reader.open(directory).ok() && reader.times() == DirectoryTimes::ofOurClock;
}

} // namespace

FolderEvent::Kind kindOfNew(const std::string& path) {
    struct stat info {};
    if (lstat(toNativePath(path).c_str(), &info) != 0)
        return FolderEvent::Kind::gone;
    if (S_ISLNK(info.st_mode) && directoryExists(path))
        return FolderEvent::Kind::folder;
    return S_ISLNK(info.st_mode) || info.st_nlink > 1 ? FolderEvent::Kind::arrived
                                                      : FolderEvent::Kind::begun;
}

struct FolderWatch::State {
    static constexpr std::size_t partsForNames = 3; // of four

    explicit State(Wanted wanted)
        : fanotify(wanted == Wanted::names),
          inotify(wanted == Wanted::names ? partsForNames : 4),
          mounts(wanted == Wanted::names) {}

    FanotifyWatch fanotify;
    InotifyWatch inotify;
    MountWatch mounts;
    bool isFirst = true; // directory, in which all others are
};

FolderWatch::FolderWatch(Wanted wanted) : state_(std::make_unique<State>(wanted)) {}

FolderWatch::~FolderWatch() = default;

FolderWatch::Added FolderWatch::add(const std::string& directory, Status& why) {
    if (std::exchange(state_->isFirst, false))
        state_->mounts.add(toNativePath(directory));
    Added added = state_->fanotify.add(directory);
    if (added == Added::refused)
        added = state_->inotify.add(directory, why);
    return added == Added::now && !isOurs(directory) ? Added::elsewhere : added;
}

std::vector<FolderEvent> FolderWatch::wait(std::chrono::milliseconds longest) {
    std::vector<FolderEvent> events;
    std::array<pollfd, 3> waiting{{{state_->inotify.handle(), POLLIN, 0},
                                   {state_->fanotify.handle(), POLLIN, 0},
                                   {state_->mounts.handle(), POLLPRI, 0}}};
    if (poll(waiting.data(), waiting.size(), static_cast<int>(longest.count())) <= 0)
        return events;
    if (waiting[0].revents != 0)
        state_->inotify.append(events);
    if (waiting[1].revents != 0)
        state_->fanotify.append(events);
    if (waiting[2].revents != 0 && state_->mounts.hasChanged()) {
        state_->fanotify.forget(); // what it had marked may be gone
        events.push_back({FolderEvent::Kind::lost, {}, {}});
    }
    return events;
}

} // namespace ov::platform
