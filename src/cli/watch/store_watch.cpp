// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "cli/watch/store_watch.h"

#include "cli/messages.h"
#include "dictation/dictation_record.h"
#include "dictation/search/matching.h"
#include "platform/files.h"
#include "platform/locale.h"
#include "platform/threads/coarse_clock.h"

#include <chrono>
#include <limits>
#include <utility>

namespace ov::cli {

using platform::FolderEvent;
using platform::FolderWatch;

namespace {

constexpr std::int64_t searchIntervalMs = 3000; // where the system does not tell
constexpr std::chrono::milliseconds longestWait{1000};
constexpr std::chrono::milliseconds shortWait{200};

// As by the search: no path could name it otherwise.
bool isLeftOut(const std::string& name) {
    return modDictation::hasDictationEnding(name) && name.find('\\') != std::string::npos;
}

} // namespace

StoreWatch::StoreWatch(const modDictation::Search& what, HitSearch with, Arrivals& arrivals,
                       const Telling& telling)
    : what_(what), with_(std::move(with)), arrivals_(arrivals), telling_(telling) {
    with_.entered = [this](const std::string& directory) { addFolder(directory); };
}

ExitCode StoreWatch::run() {
    while (goesOn())
        step();
    return result_;
}

bool StoreWatch::goesOn() const {
    return !TerminalInterface::interrupted() && !arrivals_.isFull() && result_ == ExitCode::found;
}

void StoreWatch::step() {
    while (goesOn() && platform::coarseMilliseconds() >= nextSearch_)
        searchOnce();
    if (arrivals_.lookAgain())
        nextSearch_ = 0;
    arrivals_.catchUp();
    const bool looksAgain = arrivals_.isWaiting() || !isToldOfAll_;
    if (goesOn())
        for (const FolderEvent& event : watch_.wait(looksAgain ? shortWait : longestWait))
            handle(event);
}

void StoreWatch::searchOnce() {
    hasNewFolders_ = false;
    const modDictation::SearchReport report = searchFor(what_, with_);
    if (hasNewFolders_)
        nextSearch_ = 0;
    else if (isToldOfAll_)
        nextSearch_ = std::numeric_limits<std::int64_t>::max();
    else
        nextSearch_ = platform::coarseMilliseconds() + searchIntervalMs;
    if (goesOn())
        judge(report);
}

// What is wrong is told once, and again when it gets worse.
void StoreWatch::judge(const modDictation::SearchReport& report) {
    const LeftOut now{report.foldersUnreadable, report.foldersTooDeep, report.namesSkipped};
    if (now.isMoreThan(told_) || report.rootVanished || report.foldersRead == 0)
        tellReport(report, 0, telling_);
    told_ = now;
    constexpr std::int32_t some = 1; // to watch for what is not there yet is no failure
    result_ = report.foldersRead > 0 ? searchResult(report, some, telling_) : ExitCode::unreadable;
}

void StoreWatch::addFolder(const std::string& directory) {
    platform::Status why;
    switch (watch_.add(directory, why)) {
    case FolderWatch::Added::now:
        hasNewFolders_ = true;
        break;
    case FolderWatch::Added::before:
    case FolderWatch::Added::gone:
        break;
    case FolderWatch::Added::elsewhere:
        searchFromTimeToTime(platform::toNativePath(directory) +
                             ": the system is not told of all that changes there");
        break;
    case FolderWatch::Added::refused:
        searchFromTimeToTime(why.description());
        break;
    }
}

void StoreWatch::searchFromTimeToTime(const std::string& why) {
    if (!std::exchange(isToldOfAll_, false))
        return;
    with_.terminal.clearProgress();
    complain(why + "; looks through the store every " + std::to_string(searchIntervalMs / 1000) +
             " seconds");
}

void StoreWatch::handle(const FolderEvent& event) {
    const std::string path = event.directory + event.name;
    if (isLeftOut(event.name))
        nextSearch_ = 0; // which counts and tells it
    switch (event.kind) {
    case FolderEvent::Kind::begun:
        arrivals_.begun(path);
        break;
    case FolderEvent::Kind::arrived:
        isHit(event) ? arrivals_.arrived(path) : arrivals_.gone(path);
        break;
    case FolderEvent::Kind::gone:
        arrivals_.gone(path);
        break;
    case FolderEvent::Kind::lost:
        arrivals_.lost();
        nextSearch_ = 0;
        break;
    case FolderEvent::Kind::folder:
        nextSearch_ = 0;
        break;
    }
}

// As the search would find it.
bool StoreWatch::isHit(const FolderEvent& event) const {
    if (!modDictation::hasDictationEnding(event.name) || isLeftOut(event.name) ||
        !platform::fileExists(event.directory + event.name))
        return false;
    modDictation::PreparedCriteria criteria(what_.criteria, platform::now());
    std::string buffer;
    return MatchDictation(event.directory, modDictation::dictationName(event.name, buffer),
                          criteria, what_.all);
}

} // namespace ov::cli
