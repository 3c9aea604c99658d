// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "catalogue/kept_columns.h"
#include "dictation/search/search.h"
#include "platform/locale.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

// A search as a catalogue is asked it: which of the numbers that it keeps may belong to hits.

namespace ov::catalogue {

// What is asked of a value that is there, not empty, and what the field should hold.
enum class Test : std::uint8_t {
    none, // none will do
    all,
    numbers,      // one of `numbers`
    range,        // from `first` to `last`
    outsideRange, // not from `first` to `last`
    bit,          // of flags: that of `first` is set
    noBit,
    contains, // of texts: `text`
    containsNot,
    equals,
};

// One criterion.
struct Condition {
    enum class On : std::uint8_t { column, folderText, nothing };

    On on = On::nothing;    // nothing: any dictation may meet it
    std::size_t column = 0; // in keptColumns()
    bool absent = false;    // a name without the field will do
    bool empty = false;
    bool other = false; // kept::other
    Test test = Test::none;
    std::vector<std::int64_t> numbers; // as they are kept, as are first and last
    std::int64_t first = 0;
    std::int64_t last = 0;
    std::string text; // in upper case
};

struct Question {
    std::string root;                           // a directory text
    std::int32_t depth = 0;                     // below it
    bool all = true;                            // of the groups
    std::vector<std::vector<Condition>> groups; // inside of each it is the other way round
    // What meets it is a hit. Else it may be one: the criteria decide.
    bool isExact = true;

    // Whether only few dictations need be looked at, by an index.
    bool isNarrow() const noexcept;
};

Question questionOf(const modDictation::Search& search, const platform::DateTime& now);

} // namespace ov::catalogue
