// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/posix/file_descriptor.h"
#include "platform/terminal/folder_watch.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <sys/types.h>
#include <unordered_map>
#include <vector>

struct fanotify_event_metadata;

namespace ov::platform {

// A watch for each file system, which needs the rights of an administrator.
class FanotifyWatch {
public:
    explicit FanotifyWatch(bool isWanted);

    int handle() const noexcept { return fanotify_.get(); }
    // Now, before or gone; refused where the file system cannot be watched in this way.
    FolderWatch::Added add(const std::string& directory);
    // All is to be added again.
    void forget();
    // Reads until there is something of these directories, or nothing any more.
    void append(std::vector<FolderEvent>& events);

private:
    bool watchesFileSystem(const std::string& native, dev_t device);
    bool appendSome(std::vector<FolderEvent>& events);
    void append(std::string_view event, std::uint64_t mask, std::vector<FolderEvent>& events);

    FileDescriptor fanotify_;
    std::unordered_map<dev_t, bool> fileSystems_; // whether they are watched
    // By the file system's own names for them: one directory may be reached in several ways.
    std::unordered_map<std::string, std::vector<std::string>> directories_;
};

} // namespace ov::platform
