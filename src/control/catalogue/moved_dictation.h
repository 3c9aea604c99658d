// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "control/results/result_model.h"
#include "dictation/search/search.h"

#include <cstdint>
#include <set>
#include <string>

namespace ov {

// A dictation of a list whose file is not where it was, while it is looked for.
class MovedDictation {
public:
    // `list` has a hit with that path, and lives as long.
    MovedDictation(const ResultModel& list, const std::string& path);

    std::int32_t hit() const { return hit_; }
    const std::string& path() const { return path_; }
    // For its name; a field reads the same for some others.
    modDictation::Search searchIn(const std::string& root) const;
    // What a catalogue answers to that: what is in it together with the old place is another one.
    void noteAnswer(const modDictation::DictationList& answer);
    // Whether what that search finds is it.
    bool isAt(const modDictation::Dictation& found) const;

private:
    const ResultModel& list_;
    const std::int32_t hit_;
    const std::string path_;
    std::set<std::string> others_; // paths
};

} // namespace ov
