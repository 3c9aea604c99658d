// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "cli/exit_code.h"
#include "dictation/search/search.h"

#include <cstdint>

namespace ov::cli {

// Tells what was left out and whether the search ended early.
void tellReport(const modDictation::SearchReport& report, std::int32_t hitCount);

ExitCode searchResult(const modDictation::SearchReport& report, std::int32_t hitCount);

} // namespace ov::cli
