// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/file_access.h"
#include "platform/status.h"

#include <memory>
#include <string>
#include <string_view>

namespace ov::platform {

// New content for a file, written piece by piece. It is written beside the file, which keeps its
// old content until commit() renames the new one into its place: a reader or a crash sees the one
// or the other. Keeps the permissions of the file and, when the path is a link, the link. Without
// commit() the file stays untouched and nothing is left beside it. What a killed process left
// beside its file goes when the next file of that folder is replaced on the same machine.
class FileReplacement {
public:
    FileReplacement();
    ~FileReplacement();
    FileReplacement(const FileReplacement&) = delete;
    FileReplacement& operator=(const FileReplacement&) = delete;

    // Once. Refused for a file that the user may not write and for what is no file.
    Status open(std::string_view path, Access access = Access::byUmask);

    // Appends. Every piece is a system call.
    Status write(std::string_view content);

    // The native name of what is being written, for a library that opens files by itself. Whoever
    // uses it does not call write(), and reads back what the library wrote.
    const std::string& nativeName() const;

    // Syncs, reads back what write() was given, and renames. EIO when not all of it is there.
    Status commit();

private:
    class TemporaryFile;

    std::string target_; // native
    std::unique_ptr<TemporaryFile> file_;
};

} // namespace ov::platform
