// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "control/criteria/criteria_file.h"

#include "dictation/search/criterion.h"
#include "support/log.h"
#include "support/patient_files.h"

#include <string_view>

namespace ov {

namespace {

constexpr const char* fileName = "SearchCriteria.dat";
constexpr const char* backupName = "SearchCriteria.bak";

} // namespace

// A server that does not answer may have it.
bool CriteriaFile::isKnownToBeMissing() const {
    const auto kind = patient::fileKind(path(fileName));
    return kind && *kind != platform::FileKind::file;
}

std::vector<std::string> CriteriaFile::load() {
    unreadable_ = false;
    if (directory_.empty() || isKnownToBeMissing())
        return {};
    std::string content;
    const platform::Status read = patient::readFile(path(fileName), content);
    if (!read.ok()) {
        unreadable_ = true;
        WriteErrorLog(read, "LoadCriteria");
        return {};
    }
    modDictation::CriteriaLines lines = modDictation::readCriteriaLines(content);
    if (lines.skipped > 0)
        if (const platform::Status kept = keepUnreadable(content); !kept.ok()) {
            unreadable_ = true; // save() tries again, and leaves the file alone until it is kept
            WriteErrorLog(kept, "LoadCriteria");
        }
    return std::move(lines.criteria);
}

// Each content once, however often it is met.
platform::Status CriteriaFile::keepUnreadable(const std::string& content) const {
    std::string kept;
    if (patient::readFile(path(backupName), kept).ok() && kept.find(content) != std::string::npos)
        return {};
    return patient::appendToFile(path(backupName), content, platform::Access::ownerOnly);
}

// A file that could not be read may hold criteria that nobody has seen: only when it can be read
// by now, and was kept, it gives way.
platform::Status CriteriaFile::keepWhatWasNotRead() {
    if (!unreadable_)
        return {};
    std::string content;
    platform::Status kept;
    if (!isKnownToBeMissing()) {
        kept = patient::readFile(path(fileName), content);
        if (kept.ok())
            kept = keepUnreadable(content);
    }
    unreadable_ = !kept.ok();
    return kept;
}

platform::Status CriteriaFile::save(std::span<const std::string> criteria) {
    if (directory_.empty())
        return {};
    if (platform::Status kept = keepWhatWasNotRead(); !kept.ok())
        return kept;
    std::string content;
    for (const std::string& line : criteria)
        content.append(line).append("\r\n");
    if (!content.empty())
        return patient::replaceFile(path(fileName), content, platform::Access::ownerOnly);
    return isKnownToBeMissing() ? platform::Status() : patient::removeFile(path(fileName));
}

} // namespace ov
