// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/files.h"
#include "platform/status.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

// Directories, one by one. Paths and threads as in files.h.

namespace ov::platform {

// Tells directories apart, however they are reached.
struct DirectoryId {
    std::uint64_t device = 0;
    std::uint64_t file = 0;
    bool operator==(const DirectoryId&) const = default;
};

// Whether a directory still holds the names that it held when it was read. Equal stamps: nothing
// was added, removed or renamed in between, where the file system keeps the times (see
// DirectoryTimes) and they were old enough at the first look.
struct DirectoryStamp {
    DirectoryId id;
    std::int64_t modified = 0; // nanoseconds since 1970, by the clock of the file system
    std::int64_t changed = 0;  // of the directory itself, which no program can set; likewise
    bool operator==(const DirectoryStamp&) const = default;
};

// Of the directory that the path names now, links followed; nothing when there is none.
std::optional<DirectoryStamp> directoryStamp(std::string_view path);

// A directory that is asked, and whose entries are, without the path that leads to it, each step of
// which costs a server a call. It stays the same one, whatever the path names by now.
class HeldDirectory {
public:
    // Those of a path, and of a name in another that is held. They hold nothing when there is none,
    // it cannot be opened, or many others are held already.
    explicit HeldDirectory(std::string_view path);
    HeldDirectory(const HeldDirectory& above, std::string_view name);
    ~HeldDirectory();
    HeldDirectory(const HeldDirectory&) = delete;
    HeldDirectory& operator=(const HeldDirectory&) = delete;

    bool isHeld() const noexcept { return handle_ >= 0; }
    // As directoryStamp(), of itself and of the directory of that name in it. While it is held.
    std::optional<DirectoryStamp> stamp() const;
    std::optional<DirectoryStamp> stampOf(std::string_view name) const;

private:
    void hold(int directory, const char* name);

    int handle_ = -1;
};

// What a file system's times of directories are worth.
enum class DirectoryTimes : std::uint8_t {
    unknown,    // perhaps nothing
    ofOurClock, // each change of names shows, at the time that this machine's clock had then
    ofItsClock, // each change of names shows; a server's clock may go otherwise
};

struct DirectoryEntry {
    std::string_view name; // bytes as stored, never "." or ".."; valid until the next call
    FileKind kind = FileKind::missing; // links followed; missing: a link that leads nowhere
    bool isLink = false;
};

// One pass over a directory, in the order of the file system. The kind comes with the listing;
// only a link costs a system call of its own. Holds no memory per entry. Keep one and open it
// again and again: its buffer is reused.
class DirectoryReader {
public:
    DirectoryReader();
    ~DirectoryReader();
    DirectoryReader(const DirectoryReader&) = delete;
    DirectoryReader& operator=(const DirectoryReader&) = delete;

    Status open(std::string_view directory);
    // Of the directory that is open or was, taken before its names are read.
    const DirectoryStamp& stamp() const noexcept { return stamp_; }
    // By the kind of the file system that the directory lies on; asks it. Unknown once the pass has
    // ended.
    DirectoryTimes times() const;

    // False at the end. A failure in the middle (the directory was removed, a bad disk) also ends
    // the pass; status() then tells.
    bool next(DirectoryEntry& entry);
    const Status& status() const noexcept { return status_; }

    void close() noexcept;

private:
    bool fill();
    void setKind(DirectoryEntry& entry, unsigned char type, const char* name) const;

    std::string native_;
    std::string buffer_;
    std::size_t position_ = 0;
    std::size_t end_ = 0;
    int handle_ = -1;
    DirectoryStamp stamp_;
    Status status_;
};

} // namespace ov::platform
