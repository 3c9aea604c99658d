// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "dictation/search/search.h"
#include "support/numbers.h"
#include "support/path_setting.h"
#include "support/text_lines.h"

#include <algorithm>

namespace ov::modDictation {

namespace {

constexpr std::string_view rootKey = "root=";
constexpr std::string_view allKey = "all=";
constexpr std::string_view depthKey = "depth=";
constexpr std::string_view limitKey = "limit=";

bool readLine(std::string_view line, Search& search) {
    const auto valueOf = [line](std::string_view key) { return line.substr(key.size()); };
    if (line.starts_with(rootKey))
        search.root = pathOfSetting(valueOf(rootKey));
    else if (line.starts_with(allKey))
        search.all = leadingInt32(valueOf(allKey)) != 0;
    else if (line.starts_with(depthKey))
        search.depth = std::max(leadingInt32(valueOf(depthKey)), noDepthLimit);
    else if (line.starts_with(limitKey))
        search.limit = std::max(leadingInt32(valueOf(limitKey)), 1);
    else if (isCriteriaString(line))
        search.criteria.push_back(ParseCriteriaString(line));
    else
        return false;
    return true;
}

// A line end would begin another criterion, the separator another value.
std::string onOneLine(std::string value) {
    std::ranges::replace_if(
        value, [](char c) { return c >= 0 && c < ' '; }, ' ');
    return value;
}

} // namespace

std::string writeSearch(const Search& search) {
    std::string text;
    const auto line = [&text](std::string_view key, std::string_view value) {
        text.append(key).append(value).push_back('\n');
    };
    line(rootKey, settingOfPath(search.root));
    line(allKey, search.all ? "1" : "0");
    line(depthKey, std::to_string(search.depth));
    line(limitKey, std::to_string(search.limit));
    for (const Criterion& c : search.criteria)
        line({},
             BuildCriteriaString(c.Field, c.Operator, onOneLine(c.Value1), onOneLine(c.Value2)));
    return text;
}

std::optional<Search> readSearch(std::string_view text) {
    Search search;
    bool found = false;
    forEachLine(text, [&](std::string_view line) { found = readLine(line, search) || found; });
    return found ? std::optional(search) : std::nullopt;
}

} // namespace ov::modDictation
