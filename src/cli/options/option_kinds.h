// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <string>
#include <utility>
#include <vector>

// What options of several commands have in common.

namespace ov::cli {

// An empty argument is a mistake, mostly a variable of a script that was never set.
extern const CLI::Validator notEmpty;

// A folder, which need not be there yet.
extern const CLI::Validator folderName;

// A whole number.
CLI::Validator inRange(std::int64_t lowest,
                       std::int64_t highest = std::numeric_limits<std::int32_t>::max());

// One of these words.
CLI::Validator oneOf(std::vector<std::string> words);

// "a, b, c"
std::string listOf(const std::vector<std::string>& words);

// An argument that the command cannot do without.
CLI::Option* addPath(CLI::App& command, const std::string& name, std::string& path,
                     const std::string& help);

// One of a few words, each of which stands for a value.
template <typename Value>
CLI::Option* addChoice(CLI::App& command, const std::string& name, auto& value,
                       const std::vector<std::pair<std::string, Value>>& choices,
                       const std::string& help) {
    std::vector<std::string> words;
    for (const auto& choice : choices)
        words.push_back(choice.first);
    return command
        .add_option_function<std::string>(
            name,
            [&value, choices](const std::string& word) {
                value =
                    std::ranges::find(choices, word, &std::pair<std::string, Value>::first)->second;
            },
            help)
        ->check(oneOf(words));
}

} // namespace ov::cli
