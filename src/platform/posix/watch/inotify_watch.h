// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/posix/file_descriptor.h"
#include "platform/terminal/folder_watch.h"

#include <cstddef>
#include <limits>
#include <map>
#include <string>
#include <sys/inotify.h>
#include <vector>

namespace ov::platform {

// A watch for each directory.
class InotifyWatch {
public:
    // At most a share of all that the system allows: `parts` of four.
    explicit InotifyWatch(std::size_t parts);

    int handle() const noexcept { return inotify_.get(); }
    // Now, before, gone or refused.
    FolderWatch::Added add(const std::string& directory, Status& why);
    // Reads what there is.
    void append(std::vector<FolderEvent>& events);

private:
    void remove(const std::vector<std::string>& moved);
    void append(const inotify_event& event, std::vector<FolderEvent>& events);

    FileDescriptor inotify_;
    int problem_ = 0;
    std::size_t most_ = std::numeric_limits<std::size_t>::max();
    // By what inotify calls them: one directory may be reached in several ways.
    std::map<int, std::vector<std::string>> directories_;
};

} // namespace ov::platform
