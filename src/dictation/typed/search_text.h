// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "dictation/search/search.h"

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

// A search as a file that a person can read and write, which window and terminal share:
//
//   name=Urgent ones of Dr. Müller     as it was saved under
//   all=1                              or 0, where any one of the criteria is enough
//   author contains müller             criteria as typed in a terminal, or criteria strings
//     typist contains müller           with blanks in front: in the group of the one above
//
// and root, depth and limit likewise where they are not those of a new Search. A line that begins
// with ";" is a remark. A file of criteria strings alone is such a search too. Encodings are those
// of settings files.

namespace ov::modDictation {

// A line that was not understood.
struct SkippedLine {
    std::size_t number = 0; // from 1
    std::string reason;
};

struct SearchText {
    Search search;
    std::string name;                           // empty: it has none
    std::size_t skipped = 0;                    // lines that say nothing of a search
    bool isSearch = false;                      // there was a line that does
    std::vector<SkippedLine> firstSkipped = {}; // at most ten
};

SearchText readSearchText(std::string_view content);

// The criteria alone, as their lines. What says something else of a search is skipped too.
struct CriteriaText {
    std::vector<Criterion> criteria;
    std::size_t skipped = 0;
};
CriteriaText readCriteriaText(std::string_view content);
std::string writeCriteriaText(std::span<const Criterion> criteria);

// The same with another name, and all else that it says, understood or not.
std::string renamedSearchText(std::string_view content, std::string_view name);

// A line end or another control character of a value or of the name becomes a blank.
std::string writeSearchText(const Search& search, std::string_view name);

} // namespace ov::modDictation
