// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "control/criteria/criteria_entry.h"
#include "platform/status.h"

#include <string>
#include <utility>
#include <vector>

namespace ov {

// The criteria as they are kept from one use of the control to the next: "SearchCriteria.dat",
// one criteria string a line. Those that are left out of searches stand beside it in
// "SearchCriteria.off", each behind its place in the list, so that whoever reads the first file
// searches for the same.
class CriteriaFile {
public:
    CriteriaFile() = default;
    // `directory` is used as it stands, so it ends in "\". Empty: nothing is kept.
    explicit CriteriaFile(std::string directory) : directory_(std::move(directory)) {}

    // The criteria, in their order; none when there is no file. Lines that are no criteria are
    // left out; what the file held is then added to "SearchCriteria.bak" beside it. A file that
    // cannot be read is logged.
    CriteriaEntries load();

    // Replaces the file, or removes it when there are no criteria. A failure leaves what was
    // there. A file that load() could not read is kept in the backup first, and left alone while
    // it cannot be read.
    platform::Status save(const CriteriaEntries& entries);

private:
    std::string path(const char* name) const { return directory_ + name; }
    bool isKnownToBeMissing(const char* name) const;
    std::vector<std::string> loadCriteria();
    void insertLeftOut(CriteriaEntries& entries);
    platform::Status saveCriteria(const std::string& content);
    platform::Status saveLeftOut(const std::string& content);
    platform::Status replace(const char* name, const std::string& content) const;
    platform::Status keepWhatWasNotRead();
    platform::Status keepUnreadable(const std::string& content) const;

    std::string directory_;
    bool unreadable_ = false;
    bool leftOutUnreadable_ = false;
};

} // namespace ov
