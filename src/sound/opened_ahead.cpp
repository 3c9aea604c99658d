// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "sound/opened_ahead.h"

#include "platform/files.h"

#include <utility>

namespace ov::sound {

namespace {

OpenedAhead*& ofThread() {
    thread_local OpenedAhead* current = nullptr;
    return current;
}

} // namespace

std::optional<OpenedSound> openSound(const std::string& path) {
    if (!platform::fileExists(path))
        return std::nullopt;
    OpenedSound opened;
    opened.error = WaveFile::open(path, opened.file);
    opened.bytes = opened.file ? opened.file->bytes() : 0;
    return opened;
}

OpenedAhead::OpenedAhead(std::string path, OpenedSound sound)
    : path_(std::move(path)), sound_(std::move(sound)) {
    ofThread() = this;
}

OpenedAhead::~OpenedAhead() {
    ofThread() = nullptr;
}

bool OpenedAhead::isThere(std::string_view path) {
    const OpenedAhead* ahead = ofThread();
    return ahead != nullptr && ahead->path_ == path && ahead->sound_;
}

std::optional<OpenedSound> OpenedAhead::take(std::string_view path) {
    if (!isThere(path))
        return std::nullopt;
    return std::exchange(ofThread()->sound_, std::nullopt);
}

} // namespace ov::sound
