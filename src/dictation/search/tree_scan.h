// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "dictation/search/dictation_list.h"
#include "platform/status.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

// The walk through the dictation tree: depth first, the files of a folder before its
// subfolders, both in the order of the file system.
//
// Left out: folders whose name begins with "_" (the host keeps what is not to be searched
// there), names that hold a "\" (no path could name them), what ends in ".WAV" but is no file,
// and a link into a folder that the walk is already inside of. What cannot be read is logged and
// counted; the walk goes on. A subfolder that is removed or moved away while its own folder stays
// is no error; when the root itself goes away or becomes another folder, the walk ends.

namespace ov::modDictation {

constexpr std::int32_t noDepthLimit = -1;

// What the last search of this thread met.
struct ScanReport {
    std::int64_t filesTested = 0;
    std::int64_t foldersRead = 0;
    std::int64_t foldersUnreadable = 0;
    std::int64_t namesSkipped = 0;          // of dictations and folders, with a "\"
    bool stopped = false;                   // by a request, before the end
    bool limitReached = false;              // the hit limit ended it; there may be more
    bool rootVanished = false;              // unmounted or moved; counts as unreadable
    std::vector<platform::Status> problems; // the first of them
};

// Searches below `root` (a directory text) and adds the hits to `results`, as full paths or
// bare file names. `maxDepth` 0 is the root alone. Ends as soon as `results` holds `maxResults`
// (1 or more). Each criteria string is parsed once, "today" is the day of the start. Tells the
// host's progress display; lets window messages be processed after every file, so a host call
// that fails (HostError) ends the search, and a second search must not be started from inside:
// it would return 0. Returns the number of hits.
std::int32_t SearchDictations(std::string_view root, std::span<const std::string> criteria,
                              std::int32_t maxDepth, DictationList& results, bool storeFullPath,
                              bool compareAnd, std::int32_t maxResults);

bool isSearchRunning() noexcept;

// Ends the running search at the next file; its hits so far stay. Without one running, the next
// search ends before it begins.
void requestSearchAbort() noexcept;

const ScanReport& lastScanReport() noexcept;

} // namespace ov::modDictation
