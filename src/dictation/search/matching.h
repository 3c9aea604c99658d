// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "dictation/dictation_record.h"
#include "dictation/search/criterion.h"
#include "platform/locale.h"

#include <cstdint>
#include <limits>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

// The test of one dictation against the criteria of a search. It runs once per file of a store of
// a million, so everything that depends on the criteria alone is worked out before the walk, and
// the values of a dictation are decoded into buffers that are used again: in the steady state
// nothing is allocated.

namespace ov::modDictation {

// Both ends included; first > last matches nothing.
struct NumberRange {
    std::int64_t first = 0;
    std::int64_t last = 0;
    bool contains(std::int64_t value) const noexcept { return value >= first && value <= last; }
};

// Matches nothing.
constexpr NumberRange emptyRange{1, 0};

// A criterion made ready: its values as the matcher of its value type compares them.
struct PreparedCriterion {
    std::int32_t field = noField;
    std::int32_t operatorId = operator_id::any;
    ValueType valueType = ValueType::none;
    std::string text;      // the first value in upper case, for text
    NumberRange range;     // of serial days, seconds or numbers that satisfy the operator
    std::int32_t code = 0; // status, priority or flag code, for codes
    std::size_t slot = 0;  // of the field's value in PreparedCriteria
    bool joinsAbove = false;
};

// The criteria of one search. Holds the value buffers of the dictation that is being tested, so
// each thread needs its own.
class PreparedCriteria {
public:
    // `now` is the day that "today", "last week" and their like count from.
    PreparedCriteria(std::span<const Criterion> criteria, const platform::DateTime& now);

    std::size_t size() const noexcept { return criteria_.size(); }
    bool hasGroups() const noexcept { return hasGroups_; }
    // It is in the group of the one before.
    bool joinsAbove(std::size_t index) const noexcept { return criteria_[index].joinsAbove; }

    // Forgets the values of the last dictation.
    void start(std::string_view path, std::string_view name) noexcept;
    // Tests the dictation that start() named against one criterion.
    bool matches(std::size_t index);
    // How often each criterion has matched so far.
    const std::vector<std::int64_t>& matched() const noexcept { return matched_; }

private:
    // A dictation field that some criterion reads: read when first asked for, kept until the
    // next dictation.
    struct Slot {
        Slot(std::int32_t dictationField, bool isText) : field(dictationField), upperCase(isText) {}

        FieldReader field;
        bool upperCase; // compared as text
        bool isRead = false;
        bool present = false;
        std::string value;
        std::string raw; // scratch for values that are upper-cased
    };

    std::size_t slotFor(std::int32_t dictationField, bool upperCase);
    const Slot& read(std::size_t index);

    std::vector<PreparedCriterion> criteria_;
    bool hasGroups_ = false;
    std::vector<std::int64_t> matched_;
    std::vector<Slot> slots_;
    std::string_view path_;
    std::string_view name_;
};

// True when the dictation satisfies all criteria (`compareAnd`), or at least one. Without
// criteria all dictations match, or none. `path` is the dictation's directory, `name` its name
// without ".WAV". Lets window messages be processed before each criterion. In AND mode every
// criterion is tested, also after one has failed, so that each file takes the same time.
//
// A criterion and the indented ones that follow it are a group, which counts as one criterion and
// is joined the other way: in AND mode one of the group is enough, else all of it must match. The
// first criterion of all begins a group, indented or not.
bool MatchDictation(std::string_view path, std::string_view name, PreparedCriteria& criteria,
                    bool compareAnd);

PreparedCriterion prepareCriterion(const Criterion& criterion, const platform::DateTime& now);

// The test of a field that is present, by the field's value type. `value` is in upper case for
// text, as decoded for all others.
bool matchValue(std::string_view value, const PreparedCriterion& criterion);

// The answer for an empty value, which follows from the operator alone.
bool EmptyValueMatch(std::int32_t operatorId) noexcept;

// The answer for a field that the name does not have.
bool missingFieldMatch(const PreparedCriterion& criterion) noexcept;

// The serial days that a date operator from 2 to 12 stands for. The week begins on
// `firstWeekday`, 0 Sunday to 6 Saturday.
NumberRange relativeDays(std::int32_t operatorId, const platform::DateTime& now,
                         int firstWeekday) noexcept;

} // namespace ov::modDictation
