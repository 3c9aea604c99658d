// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "dictation/search/matching.h"
#include "dictation/search/search.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <stop_token>
#include <string>
#include <string_view>

namespace ov::modDictation {

// One search on its way through the tree, on the thread that asked for it; see search().
class TreeWalk {
public:
    // All must live as long.
    TreeWalk(const Search& what, DictationList& hits, std::stop_token stop,
             const SearchMeans& means);

    SearchReport run();

private:
    bool isFull() const noexcept { return report_.hits >= room_; }
    bool isOver() const noexcept {
        return stop_.stop_requested() || isFull() || report_.rootVanished;
    }
    // Asked where there is more to see.
    bool leavesTheRest() noexcept {
        report_.limitReached = report_.limitReached || isFull();
        return isOver();
    }
    bool mayDescend(const AheadFolder& folder) const noexcept {
        return what_.depth == noDepthLimit || folder.depth < what_.depth;
    }

    void WalkDirectory(const AheadFolderPtr& folder);
    void WalkSubdirectories(AheadFolder& folder);
    void ScanDirectory(AheadFolder& folder);
    void countOnce(const AheadFolder& folder, bool& isCounted);
    void visitAll(const AheadFolder& folder, const ListedNames& names);
    void countTooDeep(const ListedNames& names);
    bool hasUsableName(const AheadFolder& folder, const ListedName& entry);
    void test(const AheadFolder& folder, const ListedName& file);
    template <typename Result>
    std::optional<Result> answerOf(std::function<Result()> call);
    bool isStill(std::string_view directory, const platform::DirectoryId& id);
    bool isParentThere(const AheadFolder& folder);
    void checkRoot();
    void pause();
    void pauseAfterWaiting();
    void watch();
    void reportProblem(const AheadFolder& folder);
    void reportUnreadable(const platform::Status& problem);
    void report(const platform::Status& problem);

    const Search& what_;
    PreparedCriteria criteria_;
    DictationList& hits_;
    const std::int64_t room_; // for so many hits
    std::stop_token stop_;
    const SearchWatch& watch_;
    const std::function<void(const std::string&)>& entered_;
    ListingAhead listing_;
    // Kept open: some file systems number a directory anew once nobody uses it. A call that takes
    // for ever keeps it for ever.
    std::shared_ptr<platform::DirectoryReader> root_ =
        std::make_shared<platform::DirectoryReader>();
    SearchReport report_;
    bool logging_ = true;
    std::int64_t nextWatch_ = 0; // coarse milliseconds
    std::uint32_t pauses_ = 0;
    std::string nameBuffer_;
};

} // namespace ov::modDictation
