// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

// A file that is open for reading at any place, also while others change it.

namespace ov::platform {

class ReadableFile {
public:
    ReadableFile() = default; // no file: nothing can be read
    ~ReadableFile();
    ReadableFile(ReadableFile&& other) noexcept;
    ReadableFile& operator=(ReadableFile&& other) noexcept;
    ReadableFile(const ReadableFile&) = delete;
    ReadableFile& operator=(const ReadableFile&) = delete;

    // Nothing for what is no file (a directory, a pipe, a device) and for one that may not be
    // read: those who play have one answer for all. Never waits for the other end of a pipe.
    static std::optional<ReadableFile> open(std::string_view path);

    // Bytes, as of now; nothing when that cannot be told any more.
    std::optional<std::int64_t> size() const noexcept;

    // Reads up to `count` bytes from that place on. 0 at the end, -1 when the file cannot be read;
    // fewer than asked for mean neither.
    std::int64_t read(void* target, std::size_t count, std::int64_t place) const noexcept;

private:
    std::intptr_t handle_ = -1;
};

} // namespace ov::platform
