// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "control/results/result_model.h"
#include "dictation/search/search.h"

#include <cstdint>
#include <string>

namespace ov {

// A dictation of a list whose file is not where it was, while it is looked for.
class MovedDictation {
public:
    // `list` has a hit with that path.
    MovedDictation(const ResultModel& list, const std::string& path);

    std::int32_t hit() const { return hit_; }
    const std::string& path() const { return path_; }
    // For its name; a field reads the same for some others.
    modDictation::Search searchIn(const std::string& root) const;
    // Whether what that search finds is it.
    bool isAt(const modDictation::Dictation& found) const;

private:
    const std::int32_t hit_;
    const std::string path_;
};

} // namespace ov
