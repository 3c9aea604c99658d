// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "playback/panel/file_opening.h"

#include <utility>
#include <vector>

namespace ov {

namespace {

constexpr std::size_t mostOut = 8;

// Alive while their calls are out.
std::vector<std::weak_ptr<int>>& out() {
    thread_local std::vector<std::weak_ptr<int>> ofThread;
    return ofThread;
}

} // namespace

FileOpening::FileOpening(std::string path)
    : FileOpening(std::move(path), std::make_shared<int>()) {}

FileOpening::FileOpening(std::string path, const std::shared_ptr<int>& isOut)
    : path_(std::move(path)), errand_([path = path_, isOut] { return sound::openSound(path); }) {
    out().push_back(isOut);
}

bool FileOpening::mayBegin() {
    std::erase_if(out(), [](const auto& one) { return one.expired(); });
    return out().size() < mostOut;
}

} // namespace ov
