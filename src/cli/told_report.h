// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "cli/exit_code.h"
#include "dictation/search/search.h"

#include <cstdint>

// What a search met, as a command tells it: by words on standard error and by the exit code.

namespace ov::cli {

// How much is told, and how it counts.
struct Telling {
    bool messages = true; // of each folder and name that was left out; they are counted in any case
    bool strict = false;  // whatever was left out is a failure
};

// Tells what was left out and whether the search ended early, and counts it in one line: a result
// that is not whole is never printed without a word.
void tellReport(const modDictation::SearchReport& report, std::int32_t hitCount,
                const Telling& telling);

ExitCode searchResult(const modDictation::SearchReport& report, std::int32_t hitCount,
                      const Telling& telling);

} // namespace ov::cli
