// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include <string>
#include <string_view>

// The names of files that are being written beside the one they will replace.

namespace ov::platform {

// A name in `directory` (native, ending in "/") for a file of this process; `number` tells several
// apart. It says who writes it: ".ovsearch-MACHINE-BOOT-SPACE-PROCESS-START-NUMBER.part", so that
// neither a later process of the same id, nor one of another machine or container that shares the
// folder, is taken for the writer.
std::string unfinishedName(const std::string& directory, int number);

// Removes the files of that form in the folder whose writer is gone for certain.
void removeAbandonedFiles(const std::string& directory);

// Has a file removed by removeUnfinishedFiles() while it lives. Beyond a few at a time, and for
// names that are too long, it does nothing.
class UnfinishedMark {
public:
    explicit UnfinishedMark(std::string_view name) noexcept;
    ~UnfinishedMark();
    UnfinishedMark(const UnfinishedMark&) = delete;
    UnfinishedMark& operator=(const UnfinishedMark&) = delete;

private:
    int place_ = -1;
};

// All that are marked. Signal handlers may call it.
void removeUnfinishedFiles() noexcept;

} // namespace ov::platform
