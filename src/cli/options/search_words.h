// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "cli/options/option_kinds.h"
#include "dictation/typed/quick_text.h"

#include <string>
#include <vector>

// What is searched for, among the arguments of the program: words, criteria, brackets and "--not"
// belong together in the order typed, and "-folder:test" begins as an option does.

namespace ov::cli {

// Of a command that searches: tells what will be taken, and refuses what cannot be.
void addSearchWords(CLI::App& command);
// Criteria alone, of a command whose words are files.
void addCriteria(CLI::App& command);

// Takes them off the arguments of the program, which are in the order typed, without its name. A
// file that the command wants first stays. Behind "--" all are words.
std::vector<modDictation::QuickPart> takeSearchWords(const CLI::App& app,
                                                     std::vector<std::string>& arguments);

} // namespace ov::cli
