// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "sound/wave_file.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

// Opening a sound file for a device without waiting for a disk: openSound() is called on another
// thread, and what it gave is handed to the device by an OpenedAhead while that is told to open it.

namespace ov::sound {

struct OpenedSound {
    std::uint32_t error = 0; // a media_error
    std::unique_ptr<WaveFile> file;
    std::int64_t bytes = 0; // of the file on the disk
};

// Nothing for what is no file. May be called from any thread.
std::optional<OpenedSound> openSound(const std::string& path);

// While it lives, our device takes this for the file of that path, once, and asks no disk whether
// it is there. One at a time in a thread.
class OpenedAhead {
public:
    OpenedAhead(std::string path, OpenedSound sound);
    ~OpenedAhead();
    OpenedAhead(const OpenedAhead&) = delete;
    OpenedAhead& operator=(const OpenedAhead&) = delete;

    static bool isThere(std::string_view path);
    static std::optional<OpenedSound> take(std::string_view path);

private:
    std::string path_;
    std::optional<OpenedSound> sound_;
};

} // namespace ov::sound
