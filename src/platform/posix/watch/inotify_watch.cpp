// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "platform/posix/watch/inotify_watch.h"

#include "platform/files.h"
#include "platform/posix/watch/new_entry.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>

namespace ov::platform {

namespace {

constexpr std::uint32_t changesWatched = IN_CLOSE_WRITE | IN_MOVED_TO | IN_CREATE | IN_MOVED_FROM |
                                         IN_DELETE | IN_MOVE_SELF | IN_ONLYDIR | IN_EXCL_UNLINK;
constexpr std::size_t allParts = 4;

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

std::size_t systemsLimit() {
    std::string text;
    if (!readFile(fromNativePath("/proc/sys/fs/inotify/max_user_watches"), text).ok())
        return std::numeric_limits<std::size_t>::max();
    return std::strtoull(text.c_str(), nullptr, 10);
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

InotifyWatch::InotifyWatch(std::size_t parts)
    : inotify_(inotify_init1(IN_NONBLOCK | IN_CLOEXEC)), problem_(inotify_.valid() ? 0 : errno) {
    if (parts < allParts)
        most_ = systemsLimit() / allParts * parts;
}

FolderWatch::Added InotifyWatch::add(const std::string& directory, Status& why) {
    const std::string native = toNativePath(directory);
    errno = ENOSPC;
    const int number = directories_.size() < most_
                           ? inotify_add_watch(inotify_.get(), native.c_str(), changesWatched)
                           : -1;
    if (number < 0) {
        errno = problem_ != 0 ? problem_ : errno;
        if (errno == ENOENT || errno == ENOTDIR)
            return FolderWatch::Added::gone;
        why = refusal(native);
        return FolderWatch::Added::refused;
    }
    std::vector<std::string>& ways = directories_[number];
    if (std::ranges::find(ways, directory) != ways.end())
        return FolderWatch::Added::before;
    ways.push_back(directory);
    return FolderWatch::Added::now;
}

// With all in them: they have other paths, or none that are known.
void InotifyWatch::remove(const std::vector<std::string>& moved) {
    const auto isMoved = [&moved](const std::string& directory) {
        return std::ranges::any_of(
            moved, [&](const std::string& one) { return directory.starts_with(one); });
    };
    for (const auto& [number, ways] : directories_)
        if (std::ranges::any_of(ways, isMoved))
            inotify_rm_watch(inotify_.get(), number);
}

void InotifyWatch::append(const inotify_event& event, std::vector<FolderEvent>& events) {
    if ((event.mask & (IN_Q_OVERFLOW | IN_IGNORED)) != 0)
        events.push_back({FolderEvent::Kind::lost, {}, {}});
    const auto found = directories_.find(event.wd);
    if (found == directories_.end())
        return;
    if ((event.mask & IN_IGNORED) != 0) {
        directories_.erase(found);
        return;
    }
    if ((event.mask & IN_MOVE_SELF) != 0)
        return remove(found->second);
    for (const std::string& directory : found->second)
        events.push_back({kindOf(event, directory + event.name), directory, event.name});
}

void InotifyWatch::append(std::vector<FolderEvent>& events) {
    constexpr std::size_t room = 65536;
    alignas(inotify_event) std::array<char, room> buffer; // NOLINT(*-member-init): filled by read
    const ssize_t got = read(inotify_.get(), buffer.data(), buffer.size());
    for (ssize_t place = 0; place < got;) {
        const auto* event = reinterpret_cast<const inotify_event*>(buffer.data() + place);
        append(*event, events);
        place += static_cast<ssize_t>(sizeof(inotify_event) + event->len);
    }
}

} // namespace ov::platform
