// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "control/criteria_file.h"

#include "dictation/criterion.h"
#include "platform/files.h"
#include "support/log.h"

#include <string_view>

namespace ov {

namespace {

constexpr const char* fileName = "SearchCriteria.dat";
constexpr const char* backupName = "SearchCriteria.bak";

} // namespace

std::vector<std::string> CriteriaFile::load() {
    unreadable_ = false;
    if (directory_.empty() || !platform::fileExists(path(fileName)))
        return {};
    std::string content;
    const platform::Status read = platform::readFile(path(fileName), content);
    if (!read.ok()) {
        unreadable_ = true;
        WriteErrorLog(read, "LoadCriteria");
        return {};
    }
    modDictation::CriteriaLines lines = modDictation::readCriteriaLines(content);
    if (lines.skipped > 0)
        keepUnreadable(content);
    return std::move(lines.criteria);
}

// Each content once, however often it is met.
void CriteriaFile::keepUnreadable(const std::string& content) const {
    std::string kept;
    if (platform::readFile(path(backupName), kept).ok() && kept.find(content) != std::string::npos)
        return;
    const platform::Status written =
        platform::appendToFile(path(backupName), content, platform::Access::ownerOnly);
    if (!written.ok())
        WriteErrorLog(written, "LoadCriteria");
}

// A file that could not be read may hold criteria that nobody has seen: only when it can be read
// by now, and was kept, it gives way.
bool CriteriaFile::mayReplace() {
    std::string content;
    if (unreadable_ && platform::fileExists(path(fileName))) {
        if (!platform::readFile(path(fileName), content).ok())
            return false;
        keepUnreadable(content);
    }
    unreadable_ = false;
    return true;
}

void CriteriaFile::save(std::span<const std::string> criteria) {
    if (directory_.empty() || !mayReplace())
        return;
    std::string content;
    for (const std::string& line : criteria)
        content.append(line).append("\r\n");
    if (!content.empty())
        static_cast<void>(
            platform::replaceFile(path(fileName), content, platform::Access::ownerOnly));
    else if (platform::fileExists(path(fileName)))
        static_cast<void>(platform::removeFile(path(fileName)));
}

} // namespace ov
