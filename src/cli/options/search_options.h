// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "cli/options/option_kinds.h"
#include "cli/search_request.h"

#include <optional>
#include <string>

// The options of `find` and `export` that say what to search for and what to show of it.

namespace ov::cli {

// Where, how much and in which order: all but criteria and columns.
void addSearchScope(CLI::App& command, SearchOptions& search,
                    const char* rootHelp = "Folder to search; else a word, or as set");
void addSearchOptions(CLI::App& command, SearchOptions& search);

// `usual` says what parts the cells without it.
void addSeparator(CLI::App& command, std::optional<char>& separator, const std::string& usual);

// One or several, as `files` is a text or a list of them.
CLI::Option* addCriteriaFile(CLI::App& command, auto& files, const std::string& help) {
    return command.add_option("--criteria-file", files, help)
        ->type_name("FILE")
        ->expected(1)
        ->check(notEmpty);
}

} // namespace ov::cli
