// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "sound/device/short_names.h"

#include "platform/files.h"
#include "sound/opened_ahead.h"

#include <algorithm>

namespace ov::sound {

namespace {

constexpr std::size_t mostNames = 1000;
constexpr std::size_t longestShortPath = 64; // leaves half of a command for the rest
// No server has this name, so no path is taken for one of ours.
constexpr std::string_view prefix = "\\\\.\\";

bool isShort(std::string_view path) noexcept {
    return path.size() <= longestShortPath && path.find_first_of(" \"!") == std::string_view::npos;
}

std::string_view endingOf(std::string_view path) noexcept {
    const std::size_t dot = path.find_last_of(".\\");
    constexpr std::size_t longest = 5;
    const bool usual = dot != std::string_view::npos && path[dot] == '.' &&
                       path.size() - dot <= longest && isShort(path.substr(dot));
    return usual ? path.substr(dot) : std::string_view();
}

} // namespace

std::string ShortNames::nameOf(std::size_t index) const {
    return std::string(prefix)
        .append(std::to_string(forgotten_ + index))
        .append(endingOf(paths_[index]));
}

std::string ShortNames::shortName(std::string_view path) {
    if (!OpenedAhead::isThere(path) && platform::fileKind(path) == platform::FileKind::missing)
        return {};
    if (isShort(path))
        return std::string(path);
    const std::lock_guard<std::mutex> lock(mutex_);
    const auto known = std::find(paths_.begin(), paths_.end(), path);
    if (known != paths_.end())
        return nameOf(static_cast<std::size_t>(known - paths_.begin()));
    if (paths_.size() == mostNames) {
        paths_.pop_front();
        ++forgotten_;
    }
    paths_.emplace_back(path);
    return nameOf(paths_.size() - 1);
}

std::string ShortNames::fullPath(std::string_view name) const {
    const std::lock_guard<std::mutex> lock(mutex_);
    if (name.starts_with(prefix))
        for (std::size_t i = 0; i < paths_.size(); ++i)
            if (nameOf(i) == name)
                return paths_[i];
    return std::string(name);
}

} // namespace ov::sound
