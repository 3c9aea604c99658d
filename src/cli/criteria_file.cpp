// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "cli/criteria_file.h"

#include "cli/messages.h"
#include "cli/shown_text.h"
#include "cli/terminal_interface.h"
#include "dictation/typed/search_text.h"
#include "platform/files.h"
#include "platform/terminal/terminal.h"

#include <algorithm>
#include <cstdint>
#include <iterator>

namespace ov::cli {

namespace {

// Nobody writes that many criteria; a pipe may have no end.
constexpr std::uint64_t mostBytes = std::uint64_t{16} * 1024 * 1024;

ExitCode readContent(const std::string& native, std::string& content) {
    if (platform::directoryExists(platform::fromNativePath(native))) {
        complain("--criteria-file: " + native + " is a folder; name a file of criteria in it");
        return ExitCode::unreadable;
    }
    const platform::Status read = platform::readInput(native, content, mostBytes);
    if (TerminalInterface::interrupted())
        return ExitCode::interrupted;
    if (!read.ok())
        complain(read.description());
    return read.ok() ? ExitCode::found : ExitCode::unreadable;
}

// Fewer criteria may find more: which are missing must not be left to guess.
void tellSkipped(const std::string& name, const modDictation::SearchText& text) {
    constexpr std::size_t mostColumns = 500; // of a file that is no text
    for (const modDictation::SkippedLine& line : text.firstSkipped)
        complain(name + ':' + std::to_string(line.number) + ": left out, " +
                 fittedText(line.reason, mostColumns));
    if (const std::size_t more = text.skipped - text.firstSkipped.size(); more > 0)
        complain(name + ": further lines that are no criteria: " + std::to_string(more));
}

} // namespace

ExitCode readCriteriaFile(const std::string& native, bool strict, modDictation::Search& search) {
    std::string content;
    if (const ExitCode read = readContent(native, content); read != ExitCode::found)
        return read;
    const modDictation::SearchText text = modDictation::readSearchText(content);
    std::ranges::copy(text.search.criteria, std::back_inserter(search.criteria));
    search.all = text.search.all;
    const std::string name = native == "-" ? "standard input" : native;
    tellSkipped(name, text);
    if (text.search.criteria.empty())
        complain(name + ": holds no criteria");
    return text.search.criteria.empty() || (text.skipped > 0 && strict) ? ExitCode::unreadable
                                                                        : ExitCode::found;
}

} // namespace ov::cli
