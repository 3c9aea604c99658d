// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/directories.h"

#include <chrono>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace ov::modDictation {

using HeldDirectoryPtr = std::shared_ptr<const platform::HeldDirectory>;

// A folder whose names are known, through which its subfolders are asked whether they changed, each
// once. For any number of threads.
class FolderAbove {
public:
    using Clock = std::chrono::steady_clock;

    // `held`: the folder, where it is held already; it was where its path says then.
    FolderAbove(std::string path, const platform::DirectoryId& id, HeldDirectoryPtr held = nullptr,
                Clock::time_point seen = {})
        : path_(std::move(path)),
          id_(id),
          seen_(seen),
          held_(std::move(held)),
          isAsked_(held_ != nullptr) {}

    const std::string& path() const noexcept { return path_; }
    const platform::DirectoryId& id() const noexcept { return id_; }

    // One more subfolder is going to be asked; before the first is.
    void expectOne() const {
        const std::lock_guard lock(mutex_);
        ++expected_;
        isOfMany_ = isOfMany_ || expected_ > 1;
    }

    // Of the subfolder at that path, as platform::directoryStamp() until this folder is moved.
    std::optional<platform::DirectoryStamp> stampOf(std::string_view subfolder) const {
        const HeldDirectoryPtr held = holdForMany();
        return held ? held->stampOf(nameOf(subfolder)) : platform::directoryStamp(subfolder);
    }
    // The subfolder itself, to ask those in it; perhaps not held.
    HeldDirectoryPtr hold(std::string_view subfolder) const {
        const HeldDirectoryPtr held = holdForMany();
        return held ? std::make_shared<platform::HeldDirectory>(*held, nameOf(subfolder))
                    : std::make_shared<platform::HeldDirectory>(subfolder);
    }

    // Once for each subfolder, after it was asked. The last looks whether the folder was moved
    // since: false then, as the paths of some may have led nowhere when they were still found.
    bool finishOne() const {
        return !wasHeldToTheEnd() || isFresh() || isStillThere(platform::directoryStamp(path_));
    }
    // When a subfolder that was asked at that time was where its path says.
    Clock::time_point seenThrough(Clock::time_point asked) const {
        return isFresh() ? seen_ : asked;
    }

private:
    // A single one is asked as soon as this one was, unless the walk stands still: in no more time
    // than a server may take to look up a path.
    bool isFresh() const {
        constexpr std::chrono::milliseconds most{100};
        const std::lock_guard lock(mutex_);
        return !isOfMany_ && Clock::now() < seen_ + most;
    }
    bool wasHeldToTheEnd() const {
        const std::lock_guard lock(mutex_);
        return --expected_ == 0 && std::exchange(held_, nullptr);
    }
    // The path is the shorter way to a single one.
    HeldDirectoryPtr holdForMany() const {
        const std::lock_guard lock(mutex_);
        if (isOfMany_ && !std::exchange(isAsked_, true)) {
            auto opened = std::make_shared<platform::HeldDirectory>(path_);
            if (opened->isHeld() && isStillThere(opened->stamp()))
                held_ = std::move(opened);
        }
        return held_;
    }
    bool isStillThere(const std::optional<platform::DirectoryStamp>& stamp) const {
        return stamp && stamp->id == id_;
    }
    std::string_view nameOf(std::string_view subfolder) const {
        return subfolder.substr(path_.size(), subfolder.size() - path_.size() - 1);
    }

    const std::string path_; // a directory text
    const platform::DirectoryId id_;
    const Clock::time_point seen_;

    mutable std::mutex mutex_;      // guards what follows
    mutable HeldDirectoryPtr held_; // let go of when all were asked: files are few
    mutable bool isAsked_;          // to be held
    mutable bool isOfMany_ = false; // subfolders
    mutable int expected_ = 0;      // and not yet asked
};

} // namespace ov::modDictation
