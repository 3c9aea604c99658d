// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "control/criteria/criteria_file.h"

#include "dictation/search/criterion.h"
#include "platform/settings/profile_encoding.h"
#include "support/log.h"
#include "support/numbers.h"
#include "support/patient_files.h"
#include "support/text_lines.h"

#include <algorithm>
#include <string_view>

namespace ov {

namespace {

constexpr const char* fileName = "SearchCriteria.dat";
constexpr const char* backupName = "SearchCriteria.bak";
constexpr const char* leftOutName = "SearchCriteria.off";

} // namespace

// A server that does not answer may have it.
bool CriteriaFile::isKnownToBeMissing(const char* name) const {
    const auto kind = patient::fileKind(path(name));
    return kind && *kind != platform::FileKind::file;
}

CriteriaEntries CriteriaFile::load() {
    CriteriaEntries entries;
    for (std::string& criterion : loadCriteria())
        entries.push_back({std::move(criterion)});
    insertLeftOut(entries);
    return entries;
}

void CriteriaFile::insertLeftOut(CriteriaEntries& entries) {
    leftOutUnreadable_ = false;
    if (directory_.empty() || isKnownToBeMissing(leftOutName))
        return;
    std::string content;
    if (const platform::Status read = patient::readFile(path(leftOutName), content); !read.ok()) {
        leftOutUnreadable_ = true;
        WriteErrorLog(read, "LoadCriteria");
        return;
    }
    const std::string text = platform::settingsText(content);
    forEachLine(text, [&](std::string_view line) {
        const std::size_t end = std::min(line.find(modDictation::criteriaSeparator), line.size());
        const std::string_view criterion = line.substr(std::min(end + 1, line.size()));
        if (!modDictation::isCriteriaString(criterion))
            return;
        const int place = std::clamp(leadingInt32(line), 0, static_cast<int>(entries.size()));
        entries.insert(entries.begin() + place, {std::string(criterion), true});
    });
}

std::vector<std::string> CriteriaFile::loadCriteria() {
    unreadable_ = false;
    if (directory_.empty() || isKnownToBeMissing(fileName))
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
    if (!isKnownToBeMissing(fileName)) {
        kept = patient::readFile(path(fileName), content);
        if (kept.ok())
            kept = keepUnreadable(content);
    }
    unreadable_ = !kept.ok();
    return kept;
}

platform::Status CriteriaFile::replace(const char* name, const std::string& content) const {
    if (!content.empty())
        return patient::replaceFile(path(name), content, platform::Access::ownerOnly);
    return isKnownToBeMissing(name) ? platform::Status() : patient::removeFile(path(name));
}

platform::Status CriteriaFile::saveCriteria(const std::string& content) {
    platform::Status kept = keepWhatWasNotRead();
    return kept.ok() ? replace(fileName, content) : kept;
}

// A file that could not be read may hold what nobody has seen: it gives way as the other one does,
// and is left alone where there is nothing to write.
platform::Status CriteriaFile::saveLeftOut(const std::string& content) {
    if (leftOutUnreadable_) {
        if (content.empty())
            return {};
        std::string present;
        platform::Status kept = patient::readFile(path(leftOutName), present);
        if (kept.ok())
            kept = keepUnreadable(present);
        if (!kept.ok())
            return kept;
        leftOutUnreadable_ = false;
    }
    return replace(leftOutName, content);
}

platform::Status CriteriaFile::save(const CriteriaEntries& entries) {
    if (directory_.empty())
        return {};
    std::string criteria;
    std::string leftOut;
    for (std::size_t place = 0; place < entries.size(); ++place) {
        if (entries[place].leftOut)
            leftOut.append(std::to_string(place)).push_back(modDictation::criteriaSeparator);
        (entries[place].leftOut ? leftOut : criteria)
            .append(entries[place].criterion)
            .append("\r\n");
    }
    // Before the other file gives them up.
    if (platform::Status saved = saveLeftOut(leftOut); !saved.ok())
        return saved;
    return saveCriteria(criteria);
}

} // namespace ov
