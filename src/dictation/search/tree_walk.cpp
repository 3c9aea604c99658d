// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "dictation/search/tree_walk.h"

#include "dictation/dictation_record.h"
#include "platform/directories.h"
#include "platform/locale.h"
#include "platform/text.h"
#include "platform/threads/coarse_clock.h"
#include "platform/threads/errand.h"
#include "platform/user_interface.h"
#include "plugin/modOVPlugIn.h"
#include "support/language/modLanguage.h"
#include "support/language/text_ids.h"
#include "support/log.h"
#include "support/modFilePath.h"

#include <cerrno>
#include <chrono>
#include <utility>
#include <vector>

namespace ov::modDictation {

namespace {

// A folder that cannot be read is worth a line each, but a broken disk must not fill the log.
constexpr std::size_t mostProblems = 100;

constexpr std::int64_t watchIntervalMs = 10;

} // namespace

TreeWalk::TreeWalk(const Search& what, DictationList& hits, std::stop_token stop,
                   const SearchMeans& means)
    : what_(what),
      criteria_(what.criteria, platform::now()),
      hits_(hits),
      room_(std::int64_t{what.limit} - hits.size()),
      stop_(std::move(stop)),
      watch_(means.watch),
      entered_(means.entered),
      listing_(
          {modFilePath::AddBackslash(what.root), what.depth, means.aheadBytes, means.remembered}) {}

// What `call` answers, on a thread of its own; nothing when the search was stopped meanwhile.
template <typename Result>
std::optional<Result> TreeWalk::answerOf(std::function<Result()> call) {
    constexpr std::chrono::milliseconds step{5};
    platform::Errand<Result> errand(std::move(call));
    while (!errand.wait(step)) {
        pauseAfterWaiting();
        if (stop_.stop_requested())
            return std::nullopt;
    }
    return errand.take();
}

SearchReport TreeWalk::run() {
    const AheadFolderPtr& root = listing_.root();
    if (!root->path.empty() && !stop_.stop_requested() &&
        answerOf<platform::Status>(
            [reader = root_, path = root->path] { return reader->open(path); })) {
        WalkDirectory(root);
        if (root_->status().ok() && !isOver())
            checkRoot();
    }
    report_.stopped = stop_.stop_requested();
    if (what_.all)
        report_.matched = criteria_.matched();
    return std::move(report_);
}

void TreeWalk::pause() {
    constexpr std::uint32_t betweenWatches = 16; // asking the clock costs as much as a test
    platform::processMessagesNowAndThen();
    if (++pauses_ % betweenWatches == 0)
        watch();
}

// The window has stood still while the walk waited.
void TreeWalk::pauseAfterWaiting() {
    platform::userInterface().processMessages();
    watch();
}

void TreeWalk::watch() {
    if (!watch_ || platform::coarseMilliseconds() < nextWatch_)
        return;
    watch_(report_);
    nextWatch_ = platform::coarseMilliseconds() + watchIntervalMs;
}

void TreeWalk::WalkDirectory(const AheadFolderPtr& folder) {
    const bool isRoot = folder->depth == 0;
    modOVPlugIn::ProgressText(platform::textFromBytes(folder->path));
    pause(); // a folder may have no entries
    listing_.enter(folder);
    ScanDirectory(*folder);
    WalkSubdirectories(*folder);
    if (isRoot)
        modOVPlugIn::ProgressClear();
}

void TreeWalk::WalkSubdirectories(AheadFolder& folder) {
    if (!mayDescend(folder))
        return;
    const bool isRoot = folder.depth == 0;
    std::vector<AheadFolderPtr> subfolders = listing_.takeSubfolders(folder);
    if (isRoot && !isOver()) {
        modOVPlugIn::ProgressInit(0, 1, 0, modLanguage::GetText(text_id::countingDirectories));
        modOVPlugIn::ProgressInit(0, static_cast<std::int32_t>(subfolders.size()), 0,
                                  modLanguage::GetText(text_id::searchingDirectories));
    }
    std::int32_t done = 0;
    for (AheadFolderPtr& subfolder : subfolders) {
        if (leavesTheRest())
            break;
        WalkDirectory(std::exchange(subfolder, nullptr)); // its memory goes with it
        if (isRoot)
            modOVPlugIn::ProgressValue(++done);
    }
}

void TreeWalk::ScanDirectory(AheadFolder& folder) {
    ListedNamesPtr names;
    bool isCounted = false;
    while (!stop_.stop_requested()) {
        const ListingAhead::Taken taken = listing_.take(folder, names);
        if (taken != ListingAhead::Taken::nothingYet && folder.opened && !folder.isCircular)
            countOnce(folder, isCounted);
        switch (taken) {
        case ListingAhead::Taken::names:
            visitAll(folder, *names);
            if (report_.limitReached)
                return;
            break;
        case ListingAhead::Taken::nothingYet:
            pauseAfterWaiting();
            break;
        case ListingAhead::Taken::end:
            if (!folder.problem.ok())
                reportProblem(folder);
            return;
        }
    }
}

void TreeWalk::countOnce(const AheadFolder& folder, bool& isCounted) {
    if (std::exchange(isCounted, true))
        return;
    ++report_.foldersRead;
    if (entered_)
        entered_(folder.path);
}

void TreeWalk::visitAll(const AheadFolder& folder, const ListedNames& names) {
    std::string_view rest = names.dictations;
    for (ListedName file; takeName(rest, file) && !leavesTheRest(); pause())
        if (hasUsableName(folder, file))
            test(folder, file);
    if (!mayDescend(folder))
        return countTooDeep(names);
    rest = names.folders;
    for (ListedName subfolder; takeName(rest, subfolder) && !leavesTheRest(); pause())
        static_cast<void>(hasUsableName(folder, subfolder));
}

void TreeWalk::countTooDeep(const ListedNames& names) {
    std::string_view rest = names.folders;
    for (ListedName subfolder; takeName(rest, subfolder);)
        ++report_.foldersTooDeep;
}

// No path could name it otherwise.
bool TreeWalk::hasUsableName(const AheadFolder& folder, const ListedName& entry) {
    if (!entry.hasBackslash)
        return true;
    ++report_.namesSkipped;
    report({EINVAL, platform::toNativePath(folder.path).append(entry.name),
            "left out, the name holds a backslash"});
    return false;
}

void TreeWalk::test(const AheadFolder& folder, const ListedName& file) {
    ++report_.filesTested;
    const std::string_view name =
        file.isUtf8 ? withoutEnding(file.name) : dictationName(file.name, nameBuffer_);
    if (!MatchDictation(folder.path, name, criteria_, what_.all))
        return;
    hits_.add(folder.path, file.name);
    ++report_.hits;
}

// Whether the directory is there and is that one.
bool TreeWalk::isStill(std::string_view directory, const platform::DirectoryId& id) {
    return answerOf<bool>([=, path = std::string(directory)] {
               const auto stamp = platform::directoryStamp(path);
               return stamp && stamp->id == id;
           })
        .value_or(false);
}

bool TreeWalk::isParentThere(const AheadFolder& folder) {
    const std::string_view path = folder.path;
    return isStill(path.substr(0, path.find_last_of('\\', path.size() - 2) + 1),
                   folder.around->folder.id());
}

void TreeWalk::checkRoot() {
    const std::string& root = listing_.root()->path;
    if (isStill(root, root_->stamp().id) || stop_.stop_requested())
        return;
    report_.rootVanished = true;
    reportUnreadable(
        {ENOENT, platform::toNativePath(root),
         "unmounted or moved during the search; what was found until then is not all"});
}

// A subfolder that is gone was there a moment ago: somebody moved it. Where what it lies in is
// gone too, its dictations were never looked at.
void TreeWalk::reportProblem(const AheadFolder& folder) {
    if (folder.problem.kind() == platform::Status::Kind::missing && root_->status().ok()) {
        checkRoot();
        if (report_.rootVanished || (folder.depth > 0 && isParentThere(folder)))
            return;
    }
    if (!stop_.stop_requested())
        reportUnreadable(folder.problem);
}

void TreeWalk::reportUnreadable(const platform::Status& problem) {
    ++report_.foldersUnreadable;
    report(problem);
}

void TreeWalk::report(const platform::Status& problem) {
    if (report_.problems.size() >= mostProblems)
        return;
    report_.problems.push_back(problem);
    logging_ = logging_ && WriteErrorLog(problem, "ScanDirectory");
}

} // namespace ov::modDictation
