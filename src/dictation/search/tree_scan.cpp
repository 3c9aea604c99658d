// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "dictation/search/tree_scan.h"

#include "dictation/dictation_record.h"
#include "dictation/search/matching.h"
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
    bool searchAbort = false;
    std::int32_t currentDepth = 0; // of the folder being walked, the root is 0
    std::int32_t maxDepth = 0;
    ScanReport report;
};

State& state() noexcept {
    thread_local State threadState;
    return threadState;
}

// Every way out of a search leaves the thread ready for the next one.
class RunningSearch {
public:
    RunningSearch() {
        state().searchRunning = true;
        state().report = {};
    }
    ~RunningSearch() {
        State& current = state();
        current.searchRunning = false;
        current.searchAbort = false;
        current.currentDepth = 0;
        current.maxDepth = 0;
    }
    RunningSearch(const RunningSearch&) = delete;
    RunningSearch& operator=(const RunningSearch&) = delete;
};

std::vector<Criterion> parseAll(std::span<const std::string> criteria) {
    std::vector<Criterion> parsed;
    parsed.reserve(criteria.size());
    for (const std::string& text : criteria)
        parsed.push_back(ParseCriteriaString(text));
    return parsed;
}

// A folder that cannot be read is worth a line each, but a broken disk must not fill the log.
constexpr std::size_t mostProblems = 100;

class TreeWalk {
public:
    TreeWalk(std::span<const Criterion> criteria, bool compareAnd, DictationList& results,
             bool storeFullPath, std::int32_t maxResults)
        : state_(state()),
          criteria_(criteria, platform::now()),
          compareAnd_(compareAnd),
          results_(results),
          storeFullPath_(storeFullPath),
          maxResults_(maxResults) {}

    void start(std::string_view root);

private:
    using Names = std::vector<std::string>;

    bool isFull() const noexcept { return results_.size() >= maxResults_; }
    bool isOver() const noexcept {
        return state_.searchAbort || isFull() || state_.report.rootVanished;
    }
    bool leavesTheRest() const noexcept;
    bool mayDescend() const noexcept {
        return state_.maxDepth == noDepthLimit || state_.currentDepth < state_.maxDepth;
    }

    void WalkDirectory();
    void WalkSubdirectories(const Names& subdirectories);
    void ScanDirectory(Names& subdirectories);
    bool openDirectory();
    void visit(const platform::DirectoryEntry& entry, Names& subdirectories);
    void test(std::string_view fileName);
    bool isParentThere() const;
    void checkRoot();
    void reportProblem(const platform::Status& problem);
    void reportUnreadable(const platform::Status& problem);
    void report(const platform::Status& problem);

    State& state_;
    PreparedCriteria criteria_;
    bool compareAnd_;
    DictationList& results_;
    bool storeFullPath_;
    std::int32_t maxResults_;
    bool logging_ = true;

    platform::DirectoryReader reader_; // one for all: a folder is listed before its subfolders
    std::vector<platform::DirectoryId> inside_; // the folders from the root to the current one
    std::string path_;                          // of the current folder, ends in "\"
    // Kept open: some file systems number a directory anew once nobody uses it.
    platform::DirectoryReader root_;
    std::size_t rootLength_ = 0;
    std::string nameBuffer_;
};

void TreeWalk::start(std::string_view root) {
    path_ = modFilePath::AddBackslash(root);
    rootLength_ = path_.size();
    if (path_.empty())
        return;
    const bool wasThere = root_.open(path_).ok();
    WalkDirectory();
    if (wasThere && !isOver())
        checkRoot();
}

// Asked where there is more to see.
bool TreeWalk::leavesTheRest() const noexcept {
    state_.report.limitReached = state_.report.limitReached || isFull();
    return isOver();
}

// The path is the walk's one growing buffer; it is as it was when a call returns.
void TreeWalk::WalkDirectory() {
    const bool isRoot = state_.currentDepth == 0;
    modOVPlugIn::ProgressText(platform::textFromBytes(path_));
    platform::processMessagesNowAndThen(); // a folder may have no entries
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
    ++state_.currentDepth;
    std::int32_t done = 0;
    for (const std::string& name : subdirectories) {
        if (leavesTheRest())
            break;
        path_.append(name).push_back('\\');
        WalkDirectory();
        path_.resize(length);
        if (state_.currentDepth == 1)
            modOVPlugIn::ProgressValue(++done);
    }
    --state_.currentDepth;
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
    ++state_.report.foldersRead;
    return true;
}

void TreeWalk::visit(const platform::DirectoryEntry& entry, Names& subdirectories) {
    const bool isFile = entry.kind == platform::FileKind::file;
    const bool isDictation = isFile && hasDictationEnding(entry.name);
    const bool isSubdirectory = !isFile && entry.kind == platform::FileKind::directory &&
                                !entry.name.starts_with('_') && mayDescend();
    if (isDictation || isSubdirectory) {
        if (entry.name.find('\\') != std::string_view::npos) {
            ++state_.report.namesSkipped;
            report({EINVAL, platform::toNativePath(path_) + std::string(entry.name) +
                                ": left out, the name holds a backslash"});
        } else if (isDictation) {
            test(entry.name);
        } else {
            subdirectories.emplace_back(entry.name);
        }
    }
    platform::processMessagesNowAndThen();
}

void TreeWalk::test(std::string_view fileName) {
    ++state_.report.filesTested;
    const std::string_view name = dictationName(fileName, nameBuffer_);
    if (MatchDictation(path_, name, criteria_, compareAnd_))
        results_.add(storeFullPath_ ? std::string_view(path_) : std::string_view(), fileName);
}

bool TreeWalk::isParentThere() const {
    const std::string_view parent(path_.data(), path_.find_last_of('\\', path_.size() - 2) + 1);
    return platform::directoryId(parent) == inside_[inside_.size() - 2];
}

void TreeWalk::checkRoot() {
    const std::string_view root(path_.data(), rootLength_);
    if (platform::directoryId(root) == root_.id())
        return;
    state_.report.rootVanished = true;
    reportUnreadable({ENOENT, platform::toNativePath(root) +
                                  ": unmounted or moved during the search; what was found until "
                                  "then is not all"});
}

// A subfolder that is gone was there a moment ago: somebody moved it. Where what it lies in is
// gone too, its dictations were never looked at.
void TreeWalk::reportProblem(const platform::Status& problem) {
    if (problem.number() == ENOENT && root_.status().ok()) {
        checkRoot();
        if (state_.report.rootVanished || (state_.currentDepth > 0 && isParentThere()))
            return;
    }
    reportUnreadable(problem);
}

void TreeWalk::reportUnreadable(const platform::Status& problem) {
    ++state_.report.foldersUnreadable;
    report(problem);
}

void TreeWalk::report(const platform::Status& problem) {
    ScanReport& report = state_.report;
    if (report.problems.size() >= mostProblems)
        return;
    report.problems.push_back(problem);
    logging_ = logging_ && WriteErrorLog(problem, "ScanDirectory");
}

} // namespace

std::int32_t SearchDictations(std::string_view root, std::span<const std::string> criteria,
                              std::int32_t maxDepth, DictationList& results, bool storeFullPath,
                              bool compareAnd, std::int32_t maxResults) {
    if (state().searchRunning)
        return 0;
    const RunningSearch running;
    const std::int32_t before = results.size();
    if (!state().searchAbort) {
        state().maxDepth = maxDepth;
        TreeWalk walk(parseAll(criteria), compareAnd, results, storeFullPath, maxResults);
        walk.start(root);
    }
    state().report.stopped = state().searchAbort;
    return results.size() - before;
}

bool isSearchRunning() noexcept {
    return state().searchRunning;
}

void requestSearchAbort() noexcept {
    state().searchAbort = true;
}

const ScanReport& lastScanReport() noexcept {
    return state().report;
}

} // namespace ov::modDictation
