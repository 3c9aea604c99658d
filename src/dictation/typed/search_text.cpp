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
#include <utility>

namespace ov::modDictation {

namespace {

constexpr std::string_view nameKey = "name=";
constexpr std::string_view rootKey = "root=";
constexpr std::string_view allKey = "all=";
constexpr std::string_view depthKey = "depth=";
constexpr std::string_view limitKey = "limit=";

constexpr std::string_view blanksOfLines = " \t";
constexpr std::string_view indentation = "  ";

// Of the text without the blanks in front of it.
ParsedCriterion criterionOf(std::string_view text) {
    return isCriteriaString(text) ? ParsedCriterion{ParseCriteriaString(text), {}}
                                  : parseCriterion(text);
}

// Reads criteria one after the other, and which of them are a group.
class CriteriaReader {
public:
    // With `goesOn` the first may be in a group with what it will stand below.
    explicit CriteriaReader(std::vector<Criterion>& criteria, bool goesOn = false)
        : criteria_(criteria), hasHead_(goesOn) {}

    // What is wrong with the line; empty when nothing is.
    std::string read(std::string_view line) {
        const std::size_t start = std::min(line.find_first_not_of(blanksOfLines), line.size());
        ParsedCriterion read = criterionOf(line.substr(start));
        // Without the one that it began with, a group must not become a part of the one above.
        const bool indented = start > 0 && hasHead_;
        hasHead_ = read.ok() || indented;
        if (!read.ok())
            return std::move(read.error);
        read.criterion.indented = indented;
        criteria_.push_back(std::move(read.criterion));
        return {};
    }

private:
    std::vector<Criterion>& criteria_;
    bool hasHead_;
};

// The number of the line that begins there. Lines end at "\r", "\n" or both.
std::size_t lineNumber(std::string_view lines, std::size_t begin) {
    std::size_t number = 1;
    for (std::size_t i = 0; i < begin; ++i)
        if (lines[i] == '\n' || (lines[i] == '\r' && lines[i + 1] != '\n'))
            ++number;
    return number;
}

// Calls `read` for each line that says something and `skip` for those that it gives a reason
// against.
template <typename Read, typename Skip>
void readLines(std::string_view content, Read read, Skip skip) {
    const std::string lines = platform::settingsText(content);
    const auto take = [&](std::string_view line) {
        const std::string_view said = platform::trimmed(line);
        if (said.empty() || said.starts_with(';'))
            return;
        if (std::string reason = read(line); !reason.empty())
            skip(std::move(reason), [&lines, line] {
                return lineNumber(lines, static_cast<std::size_t>(line.data() - lines.data()));
            });
    };
    forEachLine(lines, take, "\r\n");
}

std::string readLine(std::string_view line, SearchText& text, CriteriaReader& criteria) {
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
        return criteria.read(line);
    return {};
}

// A line end would begin another criterion, the separator another value.
std::string onOneLine(std::string_view value) {
    std::string line(value);
    std::ranges::replace_if(
        line, [](char c) { return c >= 0 && c < ' '; }, ' ');
    return line;
}

// A value is first made fit for a line: else what is written here would be read and written again
// in another form.
std::string criterionLine(Criterion criterion) {
    criterion.Value1 = onOneLine(criterion.Value1);
    criterion.Value2 = onOneLine(criterion.Value2);
    const std::string start(criterion.indented ? indentation : std::string_view());
    const std::string typed = typedCriterion(criterion);
    return start + (!typed.empty() ? typed
                                   : BuildCriteriaString(criterion.Field, criterion.Operator,
                                                         criterion.Value1, criterion.Value2));
}

} // namespace

SearchText readSearchText(std::string_view content) {
    constexpr std::size_t most = 10; // that anybody reads
    SearchText text;
    CriteriaReader criteria(text.search.criteria);
    readLines(
        content,
        [&](std::string_view line) {
            std::string reason = readLine(line, text, criteria);
            text.isSearch = text.isSearch || reason.empty();
            return reason;
        },
        [&text](std::string reason, const auto& number) {
            if (text.skipped++ < most)
                text.firstSkipped.push_back({number(), std::move(reason)});
        });
    return text;
}

CriteriaText readCriteriaText(std::string_view content) {
    CriteriaText text;
    CriteriaReader criteria(text.criteria, true);
    readLines(
        content, [&](std::string_view line) { return criteria.read(line); },
        [&text](const std::string&, const auto&) { ++text.skipped; });
    return text;
}

std::string writeCriteriaText(std::span<const Criterion> criteria) {
    std::string text;
    for (const Criterion& criterion : criteria)
        text.append(criterionLine(criterion)).push_back('\n');
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
    return text + writeCriteriaText(search.criteria);
}

} // namespace ov::modDictation
