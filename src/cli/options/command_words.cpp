// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "cli/options/command_words.h"

#include <algorithm>
#include <array>
#include <sstream>
#include <string_view>

namespace ov::cli {

namespace {

constexpr std::string_view endOfOptions = "--";
constexpr char betweenWords = '\0'; // which none can hold

bool takesCommand(std::string_view argument) {
    constexpr std::array<std::string_view, 4> options = {"-x", "--exec", "-X", "--exec-batch"};
    return std::ranges::find(options, argument) != options.end();
}

} // namespace

std::vector<std::string> withWholeCommands(const std::vector<std::string>& arguments) {
    std::vector<std::string> whole;
    for (auto at = arguments.begin(); at != arguments.end();) {
        whole.push_back(*at++);
        if (whole.back() == endOfOptions) {
            whole.insert(whole.end(), at, arguments.end());
            break;
        }
        if (!takesCommand(whole.back()) || at == arguments.end())
            continue;
        at += *at == endOfOptions ? 1 : 0; // of ours; a later one is the command's
        std::string& command = whole.emplace_back();
        for (; at != arguments.end() && *at != ";"; ++at)
            command.append(*at).push_back(betweenWords);
        at += at != arguments.end() ? 1 : 0;
    }
    return whole;
}

std::vector<std::string> wordsOf(const std::string& command) {
    std::vector<std::string> words;
    std::istringstream stream(command);
    for (std::string word; std::getline(stream, word, betweenWords);)
        words.push_back(word);
    return words;
}

} // namespace ov::cli
