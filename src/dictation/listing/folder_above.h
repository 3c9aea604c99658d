// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/directories.h"

#include <atomic>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace ov::modDictation {

// A folder that was listed, through which its subfolders are asked whether they changed, each once.
// For any number of threads.
class FolderAbove {
public:
    FolderAbove(std::string path, const platform::DirectoryId& id)
        : path_(std::move(path)), id_(id) {}

    const std::string& path() const noexcept { return path_; }
    const platform::DirectoryId& id() const noexcept { return id_; }

    // One more subfolder is going to be asked; before the first is.
    void expectOne() const noexcept { ++expected_; }

    // Of the subfolder at that path, as platform::directoryStamp() until the folder is moved.
    std::optional<platform::DirectoryStamp> stampOf(std::string_view subfolder) const {
        std::call_once(asked_, [this] {
            if (expected_ > 1) // else the path is the shorter way
                held_.emplace(path_, id_);
        });
        return isHeld() ? held_->stampOf(
                              subfolder.substr(path_.size(), subfolder.size() - path_.size() - 1))
                        : platform::directoryStamp(subfolder);
    }

    // Once for each subfolder, after it was asked. The last looks whether the folder was moved
    // since: false then, as the paths of some may have led nowhere when stampOf() still found them.
    bool finishOne() const {
        if (--expected_ > 0 || !isHeld())
            return true;
        const auto stamp = platform::directoryStamp(path_);
        return stamp && stamp->id == id_;
    }

private:
    bool isHeld() const noexcept { return held_ && held_->isHeld(); }

    const std::string path_; // a directory text
    const platform::DirectoryId id_;
    mutable std::atomic<int> expected_{0}; // and not yet asked
    mutable std::once_flag asked_;
    mutable std::optional<platform::HeldDirectory> held_;
};

} // namespace ov::modDictation
