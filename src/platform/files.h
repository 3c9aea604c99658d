// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/file_access.h"
#include "platform/status.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// Files and directories.
//
// A path is text with "\" between its parts; a directory text ends in "\". On Linux "\home\x\" is
// "/home/x/", "D:\x\" is looked up below the drive folder as "drives/d/x/" and "\\server\share\"
// as "drives/unc/server/share/". A path keeps the bytes of its names, also those that are no
// UTF-8, so that what a listing gave can be opened. A relative path starts at the current
// directory. A path that holds a zero byte names nothing.
//
// Functions may be called from any thread; the drive folder is kept per thread.

namespace ov::platform {

// The path as the operating system writes it, for opening and for showing to a person; empty for
// a path that names nothing.
std::string toNativePath(std::string_view path);

// The path of what a person typed or the system gave; made absolute, "." and ".." resolved by
// text, no trailing separator but for a root.
std::string fromNativePath(std::string_view native);

// The native directory that drive letters and shares are looked up in, without a trailing
// separator.
void setDriveFolder(std::string native);
const std::string& driveFolder();

enum class FileKind : std::uint8_t { missing, file, directory, other };

// What the path names; links are followed. A device, a pipe or a socket is `other`.
FileKind fileKind(std::string_view path);
bool fileExists(std::string_view path);
bool directoryExists(std::string_view path);

// Tells whether a file is still the one that was looked at before; zeros for what is missing.
struct FileStamp {
    std::uint64_t size = 0;
    std::int64_t modified = 0; // nanoseconds
    bool operator==(const FileStamp&) const = default;
};
FileStamp fileStamp(std::string_view path);
// The same, and why there is none.
Status readFileStamp(std::string_view path, FileStamp& stamp);

// "D:" or "\\server\share" of a path, empty for one that starts at the root or is relative.
std::string_view driveOf(std::string_view path);
// True for a path without a drive.
bool driveExists(std::string_view path);

Status createDirectory(std::string_view path, Access access = Access::byUmask);
// With those above it that there are not; `directory` ends in "\".
Status createDirectories(std::string_view directory, Access access = Access::byUmask);
Status removeFile(std::string_view path);

// The whole file. A file larger than `limit` bytes is refused: nothing of ours is that large.
constexpr std::uint64_t defaultReadLimit = std::uint64_t{256} * 1024 * 1024;
Status readFile(std::string_view path, std::string& content,
                std::uint64_t limit = defaultReadLimit);

// Writes beside the file, syncs and renames, so that a reader or a crash sees the old content or
// the new. Keeps the permissions of the file and, when `path` is a link, the link. Refused for a
// file that the user may not write and for what is no file. On failure the old file is untouched
// and nothing is left beside it.
Status replaceFile(std::string_view path, std::string_view content,
                   Access access = Access::byUmask);

// Opens, appends in one write, closes. Creates the file, not its directory.
Status appendToFile(std::string_view path, std::string_view content,
                    Access access = Access::byUmask);

// Fails for a file of somebody else that is there: what he put there is not to be trusted.
Status refuseForeign(std::string_view path);

// Lets nobody but its owner open a file that is there, if that is us; fails else.
Status keepToOwner(std::string_view path);

// Names of the entries of a directory, without "." and "..", sorted by bytes.
Status listNames(std::string_view directory, std::vector<std::string>& names);

// The directory that this program or plug-in was loaded from, ending in "\".
std::string moduleDirectory();

} // namespace ov::platform
