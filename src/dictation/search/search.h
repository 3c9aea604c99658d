// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "dictation/listing/listing_ahead.h"
#include "dictation/listing/remembered_store.h"
#include "dictation/search/criterion.h"
#include "dictation/search/dictation_list.h"
#include "platform/status.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <stop_token>
#include <string>
#include <string_view>
#include <vector>

// What is searched for, and where: the one value that window, terminal and export hand round.

namespace ov::modDictation {

constexpr std::int32_t noDepthLimit = -1;
constexpr std::int32_t usualDepth = 50;
constexpr std::int32_t usualLimit = 999999;

struct Search {
    std::string root;                // a directory text
    std::vector<Criterion> criteria; // with their groups, see matching.h
    bool all = true;                 // of the criteria must match; else any one of them
    std::int32_t depth = usualDepth; // of the deepest folders; 0 is the root alone
    std::int32_t limit = usualLimit; // of hits, 1 or more
    bool operator==(const Search&) const = default;
};

// What a search met.
struct SearchReport {
    std::int64_t filesTested = 0;
    std::int64_t hits = 0; // found
    // How many of these each criterion matches, whatever the others say; none where any one of the
    // criteria is enough, as then not all are looked at.
    std::vector<std::int64_t> matched;
    std::int64_t foldersRead = 0; // a catalogue reads none
    std::int64_t foldersUnreadable = 0;
    std::int64_t namesSkipped = 0;          // of dictations and folders, with a "\"
    std::int64_t foldersTooDeep = 0;        // below the depth; what they hold is not known
    bool stopped = false;                   // by a request, before the end
    bool limitReached = false;              // the limit ended it; there may be more
    bool rootVanished = false;              // unmounted or moved; counts as unreadable
    std::vector<platform::Status> problems; // the first of them
    platform::Status localeProblem;         // see there; told by one search of a process
};

// Called a hundred times a second at most, with what was met so far. It may take hits out of the
// list, which then need not hold them all; they count for the limit all the same.
using SearchWatch = std::function<void(const SearchReport&)>;

// What a search may use, and who may end it.
struct SearchMeans {
    std::stop_token stop = {};
    SearchWatch watch = {};
    // Told of each folder when its first names come, or that it has none: the directory.
    std::function<void(const std::string& directory)> entered = {};
    // What earlier searches listed: of a folder that is as it was only the times are asked.
    std::shared_ptr<RememberedStore> remembered = {};
    std::size_t aheadBytes = ListingAhead::usualBytes; // see ListingAhead
};

// Walks depth first, the files of a folder before its subfolders, both in the order of the file
// system, and adds the hits to `hits` until they are `limit` in all. "Today" is the day of the
// start. Folders are listed by other threads, which may have seen a folder a moment before its
// turn; all else is done on this one, which waits for no file system: a stop is heeded at once.
// Tells the host's progress display and lets window messages be processed after every file,
// so a host call that fails (HostError) ends the search; `hits` keeps what was found by then.
//
// Left out: folders whose name begins with "_" (the host keeps what is not to be searched
// there), names that hold a "\" (no path could name them), what ends in ".WAV" but is no file,
// and a link into a folder that the walk is already inside of. What cannot be read is logged and
// counted; the walk goes on. A subfolder that is removed or moved away while its own folder stays
// is no error; when the root itself goes away or becomes another folder, the walk ends.
//
// One at a time on each thread: from inside another one it does nothing.
SearchReport search(const Search& what, DictationList& hits, const SearchMeans& means = {});

bool isSearchRunning() noexcept;

// Ends this thread's running search at the next file; its hits so far stay. Without one running,
// the next search ends before it begins.
void requestSearchAbort() noexcept;

} // namespace ov::modDictation
