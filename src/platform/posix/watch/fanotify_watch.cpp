// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "platform/posix/watch/fanotify_watch.h"

#include "platform/files.h"
#include "platform/posix/watch/new_entry.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/fanotify.h>
#include <sys/stat.h>
#include <sys/vfs.h>

namespace ov::platform {

namespace {

constexpr std::uint64_t changesMarked =
    FAN_CREATE | FAN_DELETE | FAN_MOVED_FROM | FAN_MOVED_TO | FAN_MOVE_SELF | FAN_ONDIR;

// A file_handle behind the number of its file system, as in an event.
std::string keyOf(const void* fileSystem, std::size_t fileSystemSize, const file_handle& handle) {
    std::string key(static_cast<const char*>(fileSystem), fileSystemSize);
    key.append(reinterpret_cast<const char*>(&handle.handle_type), sizeof handle.handle_type);
    key.append(reinterpret_cast<const char*>(handle.f_handle), handle.handle_bytes);
    return key;
}

// Empty with errno set.
std::string keyOf(const std::string& native) {
    struct Room {
        alignas(file_handle) std::array<char, sizeof(file_handle) + MAX_HANDLE_SZ> bytes{};
    } room;
    auto* const handle = reinterpret_cast<file_handle*>(room.bytes.data());
    handle->handle_bytes = MAX_HANDLE_SZ;
    int mount = 0;
    struct statfs info {};
    if (name_to_handle_at(AT_FDCWD, native.c_str(), handle, &mount, AT_SYMLINK_FOLLOW) != 0 ||
        statfs(native.c_str(), &info) != 0)
        return {};
    return keyOf(&info.f_fsid, sizeof info.f_fsid, *handle);
}

FolderEvent::Kind kindOf(std::uint64_t mask, const std::string& path) {
    if ((mask & FAN_ONDIR) != 0)
        return directoryExists(path) ? FolderEvent::Kind::folder : FolderEvent::Kind::gone;
    return kindOfNew(path); // several things that happened may be told at once
}

} // namespace

FanotifyWatch::FanotifyWatch(bool isWanted)
    : fanotify_(isWanted ? fanotify_init(FAN_CLASS_NOTIF | FAN_REPORT_DFID_NAME | FAN_NONBLOCK |
                                             FAN_CLOEXEC,
                                         O_RDONLY | O_CLOEXEC)
                         : -1) {}

bool FanotifyWatch::watchesFileSystem(const std::string& native, dev_t device) {
    const auto known = fileSystems_.find(device);
    if (known != fileSystems_.end())
        return known->second;
    const bool isWatched = fanotify_mark(fanotify_.get(), FAN_MARK_ADD | FAN_MARK_FILESYSTEM,
                                         changesMarked, AT_FDCWD, native.c_str()) == 0;
    return fileSystems_.emplace(device, isWatched).first->second;
}

FolderWatch::Added FanotifyWatch::add(const std::string& directory) {
    if (!fanotify_.valid())
        return FolderWatch::Added::refused;
    const std::string native = toNativePath(directory);
    struct stat info {};
    if (stat(native.c_str(), &info) != 0)
        return errno == ENOENT || errno == ENOTDIR ? FolderWatch::Added::gone
                                                   : FolderWatch::Added::refused;
    const std::string key = watchesFileSystem(native, info.st_dev) ? keyOf(native) : std::string();
    if (key.empty())
        return FolderWatch::Added::refused;
    std::vector<std::string>& ways = directories_[key];
    if (std::ranges::find(ways, directory) != ways.end())
        return FolderWatch::Added::before;
    ways.push_back(directory);
    return FolderWatch::Added::now;
}

void FanotifyWatch::forget() {
    fileSystems_.clear();
    directories_.clear();
}

// `event` begins with where it happened: a fanotify_event_info_fid, and behind its handle a name.
void FanotifyWatch::append(std::string_view event, std::uint64_t mask,
                           std::vector<FolderEvent>& events) {
    const auto& info = *reinterpret_cast<const fanotify_event_info_fid*>(event.data());
    if (event.size() <= sizeof(fanotify_event_info_fid) + sizeof(file_handle) ||
        info.hdr.info_type != FAN_EVENT_INFO_TYPE_DFID_NAME)
        return;
    const auto& handle = *reinterpret_cast<const file_handle*>(event.data() + sizeof info);
    const auto found = directories_.find(keyOf(&info.fsid, sizeof info.fsid, handle));
    if (found == directories_.end())
        return;
    const std::string name(event.data() + sizeof info + sizeof handle + handle.handle_bytes);
    if (name == ".") { // it has another path, or none that is known
        directories_.erase(found);
        events.push_back({FolderEvent::Kind::lost, {}, {}});
        return;
    }
    for (const std::string& directory : found->second)
        events.push_back({kindOf(mask, directory + name), directory, name});
}

void FanotifyWatch::append(std::vector<FolderEvent>& events) {
    while (events.empty() && appendSome(events))
        ;
}

// False when there was nothing.
bool FanotifyWatch::appendSome(std::vector<FolderEvent>& events) {
    constexpr std::size_t room = 65536;
    // NOLINTNEXTLINE(*-member-init): filled by read
    alignas(fanotify_event_metadata) std::array<char, room> buffer;
    const ssize_t got = read(fanotify_.get(), buffer.data(), buffer.size());
    for (std::size_t place = 0; got > 0 && place < static_cast<std::size_t>(got);) {
        fanotify_event_metadata event{};
        std::memcpy(&event, buffer.data() + place, sizeof event);
        if (event.vers != FANOTIFY_METADATA_VERSION || event.event_len < sizeof event) {
            events.push_back({FolderEvent::Kind::lost, {}, {}});
            return true;
        }
        if ((event.mask & FAN_Q_OVERFLOW) != 0)
            events.push_back({FolderEvent::Kind::lost, {}, {}});
        else
            append(
                {buffer.data() + place + event.metadata_len, event.event_len - event.metadata_len},
                event.mask, events);
        place += event.event_len;
    }
    return got > 0;
}

} // namespace ov::platform
