// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "dictation/typed/search_text.h"

#include "dictation/typed/criterion_text.h"
#include "platform/settings/profile_encoding.h"
#include "platform/text.h"
#include "support/numbers.h"
#include "support/path_setting.h"
#include "support/text_lines.h"

#include <algorithm>

namespace ov::modDictation {

namespace {

constexpr std::string_view nameKey = "name=";
constexpr std::string_view rootKey = "root=";
constexpr std::string_view allKey = "all=";
constexpr std::string_view depthKey = "depth=";
constexpr std::string_view limitKey = "limit=";

bool readCriterion(std::string_view line, Search& search) {
    if (isCriteriaString(line)) {
        search.criteria.push_back(ParseCriteriaString(line));
        return true;
    }
    ParsedCriterion typed = parseCriterion(line);
    if (typed.ok())
        search.criteria.push_back(std::move(typed.criterion));
    return typed.ok();
}

bool readLine(std::string_view line, SearchText& text) {
    const auto valueOf = [line](std::string_view key) { return line.substr(key.size()); };
    Search& search = text.search;
    if (line.starts_with(nameKey))
        text.name = valueOf(nameKey);
    else if (line.starts_with(rootKey))
        search.root = pathOfSetting(valueOf(rootKey));
    else if (line.starts_with(allKey))
        search.all = leadingInt32(valueOf(allKey)) != 0;
    else if (line.starts_with(depthKey))
        search.depth = std::max(leadingInt32(valueOf(depthKey)), noDepthLimit);
    else if (line.starts_with(limitKey))
        search.limit = std::max(leadingInt32(valueOf(limitKey)), 1);
    else
        return readCriterion(line, search);
    return true;
}

// A line end would begin another criterion, the separator another value.
std::string onOneLine(std::string_view value) {
    std::string line(value);
    std::ranges::replace_if(
        line, [](char c) { return c >= 0 && c < ' '; }, ' ');
    return line;
}

std::string criterionLine(const Criterion& criterion) {
    std::string typed = typedCriterion(criterion);
    if (!typed.empty())
        return onOneLine(typed);
    return BuildCriteriaString(criterion.Field, criterion.Operator, onOneLine(criterion.Value1),
                               onOneLine(criterion.Value2));
}

} // namespace

SearchText readSearchText(std::string_view content) {
    const std::string lines = platform::settingsText(content);
    SearchText text;
    forEachLine(
        lines,
        [&text](std::string_view line) {
            if (platform::trimmed(line).empty() || line.starts_with(';'))
                return;
            const bool understood = readLine(line, text);
            text.isSearch = text.isSearch || understood;
            text.skipped += understood ? 0 : 1;
        },
        "\r\n");
    return text;
}

std::string renamedSearchText(std::string_view content, std::string_view name) {
    const std::string lines = platform::settingsText(content);
    std::string text = std::string(nameKey) + onOneLine(name) + '\n';
    forEachLine(
        lines,
        [&text](std::string_view line) {
            if (!line.empty() && !line.starts_with(nameKey))
                text.append(line).push_back('\n');
        },
        "\r\n");
    return text;
}

std::string writeSearchText(const Search& search, std::string_view name) {
    std::string text;
    const auto line = [&text](std::string_view key, std::string_view value) {
        text.append(key).append(value).push_back('\n');
    };
    const Search usual;
    if (!name.empty())
        line(nameKey, onOneLine(name));
    if (!search.root.empty())
        line(rootKey, settingOfPath(search.root));
    line(allKey, search.all ? "1" : "0");
    if (search.depth != usual.depth)
        line(depthKey, std::to_string(search.depth));
    if (search.limit != usual.limit)
        line(limitKey, std::to_string(search.limit));
    for (const Criterion& criterion : search.criteria)
        line({}, criterionLine(criterion));
    return text;
}

} // namespace ov::modDictation
