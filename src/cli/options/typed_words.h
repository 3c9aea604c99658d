// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "dictation/search/search.h"
#include "dictation/typed/quick_text.h"

#include <optional>
#include <string>
#include <vector>

// What a person typed behind `find` and `export`.

namespace ov::cli {

struct TypedWords {
    std::vector<modDictation::QuickPart> criteria;
    std::optional<std::string> root; // native
    bool rootIsWord = false;
    std::vector<std::string> foldersAsTexts; // among the criteria: free words that are folders too
};

// Without `given`, the first word that is a folder or holds a "/" and names no field, and the very
// first also when it begins with a ".", is the folder to search.
TypedWords findRootAmong(const std::vector<modDictation::QuickPart>& words,
                         const std::optional<std::string>& given);

// False when a further word must have been meant as a folder, which has been told.
bool hasOneFolder(const TypedWords& typed);

// Puts the criteria before those of the search, in groups as its `all` has them. False when they
// could not be understood, which has been told.
bool addCriteria(const TypedWords& typed, modDictation::Search& search);

// After the folder could not be searched: which of the words may have been meant otherwise.
void tellTakenWords(const TypedWords& typed);

// The same after nothing was found.
void tellFoldersAsTexts(const std::vector<std::string>& folders);

} // namespace ov::cli
