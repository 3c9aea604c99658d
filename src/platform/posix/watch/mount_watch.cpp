// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "platform/posix/watch/mount_watch.h"

#include <fcntl.h>
#include <fstream>
#include <sstream>
#include <string_view>

namespace ov::platform {

namespace {

constexpr const char* mountsOfProcess = "/proc/self/mountinfo";

// The system writes spaces and the like as "\040".
std::string unescaped(std::string_view text) {
    std::string plain;
    for (std::size_t i = 0; i < text.size(); ++i)
        if (text[i] == '\\' && i + 3 < text.size()) {
            plain.push_back(static_cast<char>((text[i + 1] - '0') * 64 + (text[i + 2] - '0') * 8 +
                                              (text[i + 3] - '0')));
            i += 3;
        } else {
            plain.push_back(text[i]);
        }
    return plain;
}

bool isIn(const std::string& path, const std::string& directory) {
    return path.starts_with(directory) &&
           (directory.ends_with('/') || path == directory || path[directory.size()] == '/');
}

} // namespace

MountWatch::MountWatch(bool isWanted)
    : mounts_(isWanted ? open(mountsOfProcess, O_RDONLY | O_CLOEXEC) : -1) {}

void MountWatch::add(const std::string& native) {
    directory_ = native;
    while (directory_.size() > 1 && directory_.ends_with('/'))
        directory_.pop_back();
    before_ = mountsAround();
}

// Each line has the mount, the one above it, its device, what of that is mounted, and where.
std::string MountWatch::mountsAround() const {
    std::string around;
    std::ifstream mounts(mountsOfProcess);
    for (std::string line; std::getline(mounts, line);) {
        std::istringstream words(line);
        std::string word;
        for (int i = 0; i < 5; ++i)
            words >> word;
        const std::string place = unescaped(word);
        if (isIn(place, directory_) || isIn(directory_, place))
            around.append(line).push_back('\n');
    }
    return around;
}

bool MountWatch::hasChanged() {
    std::string now = mountsAround();
    const bool isOther = !directory_.empty() && now != before_;
    before_ = std::move(now);
    return isOther;
}

} // namespace ov::platform
