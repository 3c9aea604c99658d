// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "dictation/dictation_record.h"
#include "dictation/search/matching.h"
#include "dictation/search/search.h"
#include "platform/coarse_clock.h"
#include "platform/files.h"
#include "platform/locale.h"
#include "platform/text.h"
#include "platform/user_interface.h"
#include "plugin/modOVPlugIn.h"
#include "support/language/modLanguage.h"
#include "support/language/text_ids.h"
#include "support/log.h"
#include "support/modFilePath.h"

#include <algorithm>
#include <cerrno>
#include <utility>

namespace ov::modDictation {

namespace {

struct State {
    bool searchRunning = false;
    std::stop_source searchAbort; // of this search, or of the next
};

State& state() noexcept {
    thread_local State threadState;
    return threadState;
}

// Every way out of a search leaves the thread ready for the next one.
class RunningSearch {
public:
    RunningSearch() { state().searchRunning = true; }
    ~RunningSearch() { state() = {}; }
    RunningSearch(const RunningSearch&) = delete;
    RunningSearch& operator=(const RunningSearch&) = delete;
};

// A folder that cannot be read is worth a line each, but a broken disk must not fill the log.
constexpr std::size_t mostProblems = 100;

constexpr std::int64_t watchIntervalMs = 10;

class TreeWalk {
public:
    TreeWalk(const Search& what, DictationList& hits, std::stop_token stop,
             const SearchWatch& watch)
        : what_(what),
          criteria_(what.criteria, platform::now()),
          hits_(hits),
          stop_(std::move(stop)),
          watch_(watch) {}

    SearchReport run();

private:
    using Names = std::vector<std::string>;

    bool isFull() const noexcept { return hits_.size() >= what_.limit; }
    bool isOver() const noexcept {
        return stop_.stop_requested() || isFull() || report_.rootVanished;
    }
    bool leavesTheRest() noexcept;
    bool mayDescend() const noexcept { return what_.depth == noDepthLimit || depth_ < what_.depth; }

    void WalkDirectory();
    void WalkSubdirectories(const Names& subdirectories);
    void ScanDirectory(Names& subdirectories);
    bool openDirectory();
    void visit(const platform::DirectoryEntry& entry, Names& subdirectories);
    void test(std::string_view fileName);
    bool isParentThere() const;
    void checkRoot();
    void pause();
    void reportProblem(const platform::Status& problem);
    void reportUnreadable(const platform::Status& problem);
    void report(const platform::Status& problem);

    const Search& what_;
    PreparedCriteria criteria_;
    DictationList& hits_;
    std::stop_token stop_;
    const SearchWatch& watch_;
    SearchReport report_;
    std::int32_t depth_ = 0; // of the folder being walked, the root is 0
    bool logging_ = true;
    std::int64_t nextWatch_ = 0; // coarse milliseconds

    platform::DirectoryReader reader_; // one for all: a folder is listed before its subfolders
    std::vector<platform::DirectoryId> inside_; // the folders from the root to the current one
    std::string path_;                          // of the current folder, ends in "\"
    // Kept open: some file systems number a directory anew once nobody uses it.
    platform::DirectoryReader root_;
    std::size_t rootLength_ = 0;
    std::string nameBuffer_;
};

SearchReport TreeWalk::run() {
    path_ = modFilePath::AddBackslash(what_.root);
    rootLength_ = path_.size();
    if (!path_.empty() && !stop_.stop_requested()) {
        const bool wasThere = root_.open(path_).ok();
        WalkDirectory();
        if (wasThere && !isOver())
            checkRoot();
    }
    report_.stopped = stop_.stop_requested();
    return std::move(report_);
}

void TreeWalk::pause() {
    platform::processMessagesNowAndThen();
    if (!watch_ || platform::coarseMilliseconds() < nextWatch_)
        return;
    watch_(report_);
    nextWatch_ = platform::coarseMilliseconds() + watchIntervalMs;
}

// Asked where there is more to see.
bool TreeWalk::leavesTheRest() noexcept {
    report_.limitReached = report_.limitReached || isFull();
    return isOver();
}

// The path is the walk's one growing buffer; it is as it was when a call returns.
void TreeWalk::WalkDirectory() {
    const bool isRoot = depth_ == 0;
    modOVPlugIn::ProgressText(platform::textFromBytes(path_));
    pause(); // a folder may have no entries
    Names subdirectories;
    inside_.push_back({});
    ScanDirectory(subdirectories);
    if (!isOver() && mayDescend()) {
        if (isRoot) {
            modOVPlugIn::ProgressInit(0, 1, 0, modLanguage::GetText(text_id::countingDirectories));
            modOVPlugIn::ProgressInit(0, static_cast<std::int32_t>(subdirectories.size()), 0,
                                      modLanguage::GetText(text_id::searchingDirectories));
        }
        WalkSubdirectories(subdirectories);
    } else if (!subdirectories.empty()) {
        leavesTheRest();
    }
    inside_.pop_back();
    if (isRoot)
        modOVPlugIn::ProgressClear();
}

void TreeWalk::WalkSubdirectories(const Names& subdirectories) {
    const std::size_t length = path_.size();
    ++depth_;
    std::int32_t done = 0;
    for (const std::string& name : subdirectories) {
        if (leavesTheRest())
            break;
        path_.append(name).push_back('\\');
        WalkDirectory();
        path_.resize(length);
        if (depth_ == 1)
            modOVPlugIn::ProgressValue(++done);
    }
    --depth_;
}

// One pass over the folder serves both: its dictations are tested as they come, the names of its
// subfolders are kept for afterwards.
void TreeWalk::ScanDirectory(Names& subdirectories) {
    if (!openDirectory())
        return;
    platform::DirectoryEntry entry;
    while (reader_.next(entry) && !leavesTheRest())
        visit(entry, subdirectories);
    if (!reader_.status().ok())
        reportProblem(reader_.status());
    reader_.close();
}

bool TreeWalk::openDirectory() {
    const platform::Status opened = reader_.open(path_);
    if (!opened.ok()) {
        reportProblem(opened);
        return false;
    }
    inside_.back() = reader_.id();
    if (std::find(inside_.begin(), inside_.end() - 1, reader_.id()) != inside_.end() - 1) {
        reader_.close();
        return false;
    }
    ++report_.foldersRead;
    return true;
}

void TreeWalk::visit(const platform::DirectoryEntry& entry, Names& subdirectories) {
    const bool isFile = entry.kind == platform::FileKind::file;
    const bool isDictation = isFile && hasDictationEnding(entry.name);
    const bool isSubdirectory = !isFile && entry.kind == platform::FileKind::directory &&
                                !entry.name.starts_with('_') && mayDescend();
    if (isDictation || isSubdirectory) {
        if (entry.name.find('\\') != std::string_view::npos) {
            ++report_.namesSkipped;
            report({EINVAL, platform::toNativePath(path_).append(entry.name),
                    "left out, the name holds a backslash"});
        } else if (isDictation) {
            test(entry.name);
        } else {
            subdirectories.emplace_back(entry.name);
        }
    }
    pause();
}

void TreeWalk::test(std::string_view fileName) {
    ++report_.filesTested;
    const std::string_view name = dictationName(fileName, nameBuffer_);
    if (MatchDictation(path_, name, criteria_, what_.all))
        hits_.add(path_, fileName);
}

bool TreeWalk::isParentThere() const {
    const std::string_view parent(path_.data(), path_.find_last_of('\\', path_.size() - 2) + 1);
    return platform::directoryId(parent) == inside_[inside_.size() - 2];
}

void TreeWalk::checkRoot() {
    const std::string_view root(path_.data(), rootLength_);
    if (platform::directoryId(root) == root_.id())
        return;
    report_.rootVanished = true;
    reportUnreadable(
        {ENOENT, platform::toNativePath(root),
         "unmounted or moved during the search; what was found until then is not all"});
}

// A subfolder that is gone was there a moment ago: somebody moved it. Where what it lies in is
// gone too, its dictations were never looked at.
void TreeWalk::reportProblem(const platform::Status& problem) {
    if (problem.kind() == platform::Status::Kind::missing && root_.status().ok()) {
        checkRoot();
        if (report_.rootVanished || (depth_ > 0 && isParentThere()))
            return;
    }
    reportUnreadable(problem);
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

} // namespace

SearchReport search(const Search& what, DictationList& hits, const std::stop_token& stop,
                    const SearchWatch& watch) {
    if (state().searchRunning)
        return {};
    const RunningSearch running;
    const std::stop_callback alsoHere(
        stop, [abort = state().searchAbort]() mutable { abort.request_stop(); });
    return TreeWalk(what, hits, state().searchAbort.get_token(), watch).run();
}

bool isSearchRunning() noexcept {
    return state().searchRunning;
}

void requestSearchAbort() noexcept {
    state().searchAbort.request_stop();
}

} // namespace ov::modDictation
