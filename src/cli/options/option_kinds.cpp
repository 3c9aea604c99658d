// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "cli/options/option_kinds.h"

#include "cli/options/did_you_mean.h"
#include "platform/files.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <utility>

namespace ov::cli {

namespace {

// As people write it: a zero in front would mean something else to a library.
std::optional<std::int64_t> wholeNumber(const std::string& text) {
    std::int64_t number = 0;
    const char* const end = text.data() + text.size();
    const auto [at, error] = std::from_chars(text.data(), end, number);
    const bool isWhole = error == std::errc() && at == end && std::to_string(number) == text;
    return isWhole ? std::optional(number) : std::nullopt;
}

} // namespace

const CLI::Validator notEmpty(
    [](const std::string& text) { return std::string(text.empty() ? "must not be empty" : ""); },
    "");

const CLI::Validator folderName(
    [](const std::string& text) {
        if (text.empty())
            return std::string("must not be empty");
        return platform::fileExists(platform::fromNativePath(text)) ? text + " is a file, no folder"
                                                                    : std::string();
    },
    "");

CLI::Validator inRange(std::int64_t lowest, std::int64_t highest) {
    return {[=](const std::string& text) -> std::string {
                const auto number = wholeNumber(text);
                if (!number || *number < lowest || *number > highest)
                    return '"' + text + "\" is no whole number from " + std::to_string(lowest) +
                           " to " + std::to_string(highest);
                return {};
            },
            ""};
}

CLI::Validator oneOf(std::vector<std::string> words) {
    return {[words = std::move(words)](const std::string& text) -> std::string {
                if (std::ranges::find(words, text) != words.end())
                    return {};
                return '"' + text + "\" is none of " + listOf(words) + didYouMean(text, words);
            },
            ""};
}

std::string listOf(const std::vector<std::string>& words) {
    std::string list;
    for (const std::string& word : words)
        list.append(list.empty() ? "" : ", ").append(word);
    return list;
}

CLI::Option* addPath(CLI::App& command, const std::string& name, std::string& path,
                     const std::string& help) {
    return command.add_option(name, path, help)->type_name("")->required()->check(notEmpty);
}

} // namespace ov::cli
