// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/directories.h"

#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace ov::modDictation {

// A folder that was listed, through which its subfolders are asked whether they changed. For any
// number of threads.
class FolderAbove {
public:
    FolderAbove(std::string path, const platform::DirectoryId& id)
        : path_(std::move(path)), id_(id) {}

    const platform::DirectoryId& id() const noexcept { return id_; }

    // Of the subfolder at that path, as platform::directoryStamp().
    std::optional<platform::DirectoryStamp> stampOf(std::string_view subfolder) const {
        std::call_once(asked_, [this] { held_.emplace(path_, id_); });
        return held_->isHeld() ? held_->stampOf(subfolder.substr(
                                     path_.size(), subfolder.size() - path_.size() - 1))
                               : platform::directoryStamp(subfolder);
    }

private:
    const std::string path_; // a directory text
    const platform::DirectoryId id_;
    mutable std::once_flag asked_;
    mutable std::optional<platform::HeldDirectory> held_;
};

} // namespace ov::modDictation
