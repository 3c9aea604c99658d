// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "dictation/search/search.h"
#include "platform/status.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace ov {

struct SavedSearch {
    std::string file; // its path
    std::string name; // as a person reads it; of recent ones empty
    modDictation::Search search;
    std::size_t skipped = 0; // lines of the file that could not be understood
};

// The searches that the user has saved, and the last ones: a file each, in the form of
// dictation/typed/search_text.h, which colleagues may have put there. What is no search is skipped
// and logged. Each function answers within a second.
class SavedSearches {
public:
    static constexpr std::size_t mostRecent = 10;
    static constexpr std::size_t mostListed = 200;

    SavedSearches() = default;
    // `directory` ends in "\" and need not exist yet; empty: nothing is kept.
    explicit SavedSearches(std::string directory) : directory_(std::move(directory)) {}

    bool canKeep() const { return !directory_.empty(); }
    std::vector<SavedSearch> saved() const;  // by name
    std::vector<SavedSearch> recent() const; // the last one first

    // Under that name, in place of the one that has it.
    platform::Status save(const std::string& name, const modDictation::Search& search) const;
    // To the name that it has: nothing is done.
    platform::Status rename(const SavedSearch& saved, const std::string& name) const;
    static platform::Status remove(const SavedSearch& saved);
    // It was searched for; only its criteria are kept.
    platform::Status note(const modDictation::Search& search) const;

private:
    std::string recentDirectory() const { return directory_ + "Recent\\"; }
    std::string freeFile(const std::string& name, const std::vector<SavedSearch>& present) const;

    std::string directory_;
};

// Without what nobody can see, marks that turn the writing direction among it: as names are listed.
std::string readableSearchName(std::string_view bytes);

// The name of the file that keeps a search of that name: "/" and what else a file name cannot hold,
// or would hide it, stands as "%2F"; a long one is cut.
std::string savedSearchFileName(std::string_view name);

} // namespace ov
