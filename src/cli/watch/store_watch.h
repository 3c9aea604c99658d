// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "cli/exit_code.h"
#include "cli/hits/hit_search.h"
#include "cli/told_report.h"
#include "cli/watch/arrivals.h"
#include "dictation/search/search.h"
#include "platform/terminal/folder_watch.h"

#include <cstdint>
#include <string>

namespace ov::cli {

// A search that goes on: after what is there it finds what arrives, until Ctrl-C, until no more is
// wanted or until the store is gone. The system tells what arrives; where it cannot, the store is
// looked through every few seconds, which costs little while its folders stay as they are.
class StoreWatch {
public:
    // `with.consumer` is `arrivals`. All must live as long.
    StoreWatch(const modDictation::Search& what, HitSearch with, Arrivals& arrivals,
               const Telling& telling);

    ExitCode run();

private:
    // What a search counts but does not look at.
    struct LeftOut {
        std::int64_t unreadable = 0;
        std::int64_t tooDeep = 0;
        std::int64_t names = 0;

        bool isMoreThan(const LeftOut& other) const noexcept {
            return unreadable > other.unreadable || tooDeep > other.tooDeep || names > other.names;
        }
    };

    bool goesOn() const;
    void step();
    void searchOnce();
    void judge(const modDictation::SearchReport& report);
    void addFolder(const std::string& directory);
    void searchFromTimeToTime(const std::string& why);
    void handle(const platform::FolderEvent& event);
    bool isHit(const platform::FolderEvent& event) const;

    const modDictation::Search& what_;
    HitSearch with_;
    Arrivals& arrivals_;
    const Telling& telling_;
    platform::FolderWatch watch_;
    std::int64_t nextSearch_ = 0; // coarse milliseconds
    bool hasNewFolders_ = false;  // what is in them may have come before they were watched
    bool isToldOfAll_ = true;     // by the system
    LeftOut told_;
    ExitCode result_ = ExitCode::found;
};

} // namespace ov::cli
