// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "dictation/dictation.h"
#include "dictation/field_table.h"
#include "export/machine/machine_value.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <unordered_map>
#include <vector>

namespace ov::cli {

// Dictations that have the same value.
struct TallyGroup {
    std::string shown; // as a person reads the value; empty where the names say nothing
    exporting::MachineValue value;
    std::int64_t count = 0;
    std::int64_t seconds = 0; // that they play in all; 0 for one that does not say
};

// Counts dictations, in all or by the value of a field: dates by day, codes whatever their
// spelling, texts composed (NFC), each folder of a path by itself. Keeps no dictation.
class Tally {
public:
    // `by` may be noField: all are one group, which is there before any dictation is.
    Tally(std::int32_t by, bool addsLengths);

    // It and others that have the same value; without lengths where there are any.
    void add(const modDictation::Dictation& dictation, std::int64_t count = 1);

    // The largest first, those of a size by their value.
    std::vector<TallyGroup> groups() const;

private:
    TallyGroup& groupOf(const modDictation::Dictation& dictation);
    TallyGroup& groupOfText(const modDictation::Dictation& dictation);
    TallyGroup& groupOfValue(exporting::MachineValue value,
                             const modDictation::Dictation& dictation);

    const modDictation::FieldDefinition& by_;
    bool addsLengths_;
    std::map<exporting::MachineValue, TallyGroup> groups_;
    // By the text in the name, so that what it stands for is worked out once.
    std::unordered_map<std::string, TallyGroup*> byText_;
    std::string text_;
};

} // namespace ov::cli
