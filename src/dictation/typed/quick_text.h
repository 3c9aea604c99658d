// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "dictation/typed/quick_values.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

// The quick form of criteria: author:müller prio:high dictated:this-week -folder:test "two words"
//
//   text       = { item }
//   item       = [ negation ] ( word | "(" { item } ")" )
//   negation   = "-" | "!"                    directly before it
//   word       = FIELD ":" [ "!" ] values     "author:müller"
//              | words                        free ones: in any text of a dictation
//   FIELD      = what fieldOfWord() knows     "author", "Autor", "prio"
//   values     = [ value { "," value } ]      any of them; none: the field is empty
//   value      = "empty"                      the field is
//              | [ "=" ] words                texts: contains; with "=" is exactly
//              | [ "=" ] code                 see codeOfLetters()
//              | "marked" | "not-marked"      or "yes", "no"
//              | [ comparison ] amount        dates, lengths; without one: exactly
//              | amount ".." [ amount ]       both ends included
//              | ".." amount
//   comparison = "<" | "<=" | ">" | ">=" | "="
//   amount     = a period or a length of quick_period.h
//   words      = anything without a blank and, behind a field, without a comma
//              | '"' anything '"'             '""' within stands for '"'
//
// Brackets stand by themselves, blanks around them. Items beside each other must all be met, or any
// one, as the search says; within brackets it is the other way round, and once more within these.
// A free word is met when one of the fields of texts contains it, the folder among them, not the
// whole name, which holds codes too. Letter case never counts.
//
// What no operator says is said by others that mean the same: ">5m" is at least 00:05:01, "-due:
// 2026-11" is until 2026-10-31, from 2026-12-01, or empty. Where there is none it is an error.

namespace ov::modDictation {

// One item of a text, or what belongs to one.
struct QuickPart {
    enum class Kind : std::uint8_t {
        word,      // blanks in it are its own
        criterion, // in the long form, see criterion_text.h
        open,
        close,
        negation, // of what follows
    };
    Kind kind = Kind::word;
    std::string text; // as typed
};

// No field: what the row of a list shows, in any of its cells.
constexpr std::int32_t shownTexts = -1;

struct QuickRules {
    platform::DateTime now; // that dates count from
    bool all = true;        // criteria must match; or any one of them
    // For the rows of a list, while somebody types. A free word is a criterion of `shownTexts`,
    // also one with a ":" behind what names no field. An item that cannot be read is left out; so
    // is a field with nothing behind the ":", and a "-" before nothing.
    bool filtersRows = false;
};

struct QuickSearch {
    struct Range {
        std::size_t first = 0;
        std::size_t end = 0; // behind the last
    };
    std::vector<Criterion> criteria; // with their groups
    QuickError error;                // its offset counts in the text of the part
    std::size_t part = 0;            // that the error is in
    std::vector<Range> leftOut = {}; // parts that were, in their order
    bool ok() const noexcept { return error.text.empty(); }
};

QuickSearch readQuickParts(std::span<const QuickPart> parts, const QuickRules& rules);

// One word, UTF-8 or Windows-1252.
QuickCondition readQuickWord(std::string_view word, const QuickRules& rules);

// In which a free word is looked for, in the order of the criteria that it makes.
std::vector<std::int32_t> fieldsOfFreeWords();

} // namespace ov::modDictation
