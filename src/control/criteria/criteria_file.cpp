// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "control/criteria/criteria_file.h"

#include "control/criteria/criteria_groups.h"
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

constexpr const char* backupName = "SearchCriteria.bak";

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
    const std::string groups = read(groups_);
    const std::size_t dropped = applyGroupLines(platform::settingsText(groups), entries);
    if (dropped == 0)
        return entries;
    keepDropped(groups_, groups);
    WriteErrorLog(
        Error(0, std::string(groups_.name) + " tells of " + std::to_string(dropped) +
                     " groups whose criteria are no longer together; what it told is in " +
                     backupName),
        "LoadCriteria");
    return entries;
}

// Empty where there is none, or where it cannot be read.
std::string CriteriaFile::read(Part& part) {
    part.unreadable = false;
    std::string content;
    if (directory_.empty() || isKnownToBeMissing(part.name))
        return content;
    if (const platform::Status read = patient::readFile(path(part.name), content); !read.ok()) {
        part.unreadable = true;
        WriteErrorLog(read, "LoadCriteria");
        return {};
    }
    return content;
}

void CriteriaFile::insertLeftOut(CriteriaEntries& entries) {
    const std::string content = read(leftOut_);
    leftOutKept_.clear();
    const std::string text = platform::settingsText(content);
    bool isWhole = true;
    forEachLine(text, [&](std::string_view line) {
        const std::size_t end = std::min(line.find(modDictation::criteriaSeparator), line.size());
        const std::string_view criterion = line.substr(std::min(end + 1, line.size()));
        if (!modDictation::isCriteriaString(criterion)) {
            isWhole = isWhole && line.empty();
            return;
        }
        const int place = std::clamp(leadingInt32(line), 0, static_cast<int>(entries.size()));
        entries.insert(entries.begin() + place, {std::string(criterion), true});
        leftOutKept_.emplace_back(criterion);
    });
    if (!isWhole)
        keepDropped(leftOut_, content);
}

std::vector<std::string> CriteriaFile::loadCriteria() {
    const std::string content = read(criteria_);
    modDictation::CriteriaLines lines = modDictation::readCriteriaLines(content);
    if (lines.skipped > 0)
        keepDropped(criteria_, content);
    return std::move(lines.criteria);
}

// What of it was not taken would be gone with the next save().
void CriteriaFile::keepDropped(Part& part, const std::string& content) const {
    const platform::Status kept = keepUnreadable(content);
    if (kept.ok())
        return;
    part.unreadable = true; // save() tries again, and leaves the file alone until then
    WriteErrorLog(kept, "LoadCriteria");
}

// Each content once, however often it is met.
platform::Status CriteriaFile::keepUnreadable(const std::string& content) const {
    std::string kept;
    if (patient::readFile(path(backupName), kept).ok() && kept.find(content) != std::string::npos)
        return {};
    return patient::appendToFile(path(backupName), content, platform::Access::ownerOnly);
}

// A file that could not be read may hold what nobody has seen: only when it can be read by now, and
// was kept, it gives way.
platform::Status CriteriaFile::keepWhatWasNotRead(Part& part) {
    if (!part.unreadable)
        return {};
    std::string content;
    platform::Status kept;
    if (!isKnownToBeMissing(part.name)) {
        kept = patient::readFile(path(part.name), content);
        if (kept.ok())
            kept = keepUnreadable(content);
    }
    part.unreadable = !kept.ok();
    return kept;
}

platform::Status CriteriaFile::write(Part& part, const std::string& content) {
    if (platform::Status kept = keepWhatWasNotRead(part); !kept.ok())
        return kept;
    if (!content.empty())
        return patient::replaceFile(path(part.name), content, platform::Access::ownerOnly);
    return isKnownToBeMissing(part.name) ? platform::Status()
                                         : patient::removeFile(path(part.name));
}

// Left alone where it could not be read and there is nothing to write.
platform::Status CriteriaFile::writeBeside(Part& part, const std::string& content) {
    return part.unreadable && content.empty() ? platform::Status() : write(part, content);
}

std::string CriteriaFile::comeBack(const CriteriaEntries& entries) const {
    std::string lines;
    for (const std::string& kept : leftOutKept_)
        if (std::ranges::any_of(entries, [&](const auto& entry) {
                return !entry.leftOut && entry.criterion == kept;
            }))
            lines.append("0").append(1, modDictation::criteriaSeparator).append(kept) += "\r\n";
    return lines;
}

// Neither file gives a criterion up before the other one has it.
platform::Status CriteriaFile::save(const CriteriaEntries& entries) {
    if (directory_.empty())
        return {};
    std::string criteria;
    std::string leftOut;
    std::vector<std::string> kept;
    for (std::size_t place = 0; place < entries.size(); ++place) {
        if (entries[place].leftOut) {
            leftOut.append(std::to_string(place)).push_back(modDictation::criteriaSeparator);
            kept.push_back(entries[place].criterion);
        }
        (entries[place].leftOut ? leftOut : criteria)
            .append(entries[place].criterion)
            .append("\r\n");
    }
    const std::string back = comeBack(entries);
    platform::Status saved = writeBeside(leftOut_, leftOut + back);
    if (saved.ok())
        saved = write(criteria_, criteria);
    if (saved.ok() && !back.empty())
        saved = writeBeside(leftOut_, leftOut);
    if (!saved.ok())
        return saved;
    leftOutKept_ = std::move(kept);
    return writeBeside(groups_, groupLines(entries));
}

} // namespace ov
