// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <deque>
#include <mutex>
#include <string>
#include <string_view>

// Short names for files, as media commands need them. The file system has none, so they are made
// up: "\\.\7.WAV". A short path without blanks is its own short name. Names are good for this
// process; the latest thousand are remembered. From any thread.

namespace ov::sound {

class ShortNames {
public:
    // Empty when there is no such file or directory.
    std::string shortName(std::string_view path);

    // The path that was given that name; any other text as it is.
    std::string fullPath(std::string_view name) const;

private:
    std::string nameOf(std::size_t index) const;

    mutable std::mutex mutex_;
    std::deque<std::string> paths_;
    std::size_t forgotten_ = 0; // paths that stood before the first
};

} // namespace ov::sound
