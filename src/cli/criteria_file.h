// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "cli/exit_code.h"
#include "dictation/search/search.h"

#include <string>

namespace ov::cli {

// Adds the criteria of a file to those that were typed; whether all must match is what the file
// says. `native` may name a pipe, "-" is standard input. `found`, or what is wrong has been told: a
// file without criteria, as every dictation would match, and, when `strict`, one with lines that
// are none.
ExitCode readCriteriaFile(const std::string& native, bool strict, modDictation::Search& search);

} // namespace ov::cli
