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
// searches for the same but for the groups, which "SearchCriteria.grp" holds.
class CriteriaFile {
public:
    CriteriaFile() = default;
    // `directory` is used as it stands, so it ends in "\". Empty: nothing is kept.
    explicit CriteriaFile(std::string directory) : directory_(std::move(directory)) {}

    // The criteria, in their order; none when there is no file. Lines that are no criteria are
    // left out, and groups that no longer fit the criteria, which is logged; what the file held is
    // then added to "SearchCriteria.bak" beside it. A file that cannot be read is logged.
    CriteriaEntries load();

    // Replaces the files, or removes them when there are no criteria. A failure leaves each
    // criterion in one of them, where it was or is to be. A file that load() could not read is kept
    // in the backup first, and left alone while it cannot be read.
    platform::Status save(const CriteriaEntries& entries);

private:
    struct Part {
        const char* name;
        bool unreadable = false; // by load()
    };
    // Those of "SearchCriteria.off" that are in the list again.
    std::string comeBack(const CriteriaEntries& entries) const;

    std::string path(const char* name) const { return directory_ + name; }
    bool isKnownToBeMissing(const char* name) const;
    std::string read(Part& part);
    std::vector<std::string> loadCriteria();
    void insertLeftOut(CriteriaEntries& entries);
    platform::Status write(Part& part, const std::string& content);
    platform::Status writeBeside(Part& part, const std::string& content);
    platform::Status keepWhatWasNotRead(Part& part);
    void keepDropped(Part& part, const std::string& content) const;
    platform::Status keepUnreadable(const std::string& content) const;

    std::string directory_;
    Part criteria_{"SearchCriteria.dat"};
    Part leftOut_{"SearchCriteria.off"};
    std::vector<std::string> leftOutKept_; // by that file now
    Part groups_{"SearchCriteria.grp"};
};

} // namespace ov
