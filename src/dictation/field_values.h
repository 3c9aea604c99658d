// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "dictation/dictation.h"
#include "dictation/field_date.h"

#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <variant>
#include <vector>

// The value of a search field as a person reads it, as a list sorts by it, and as what it is.
// List, terminal, export and print all take them from here.

namespace ov::modDictation {

// What a list shows: text as decoded, dates in the locale's short form with the time where the
// name has one, lengths as hh:mm:ss, codes as their text. A value that is not what its field
// should hold is shown as it stands; an absent one is empty.
std::string shownValue(std::int32_t field, const Dictation& dictation);

// Whether that only stands for nothing: the name lacks the field, or holds an empty one, and a code
// that is assumed then is shown, as "Normal" for a priority. Searches for that code do not find it.
bool isAssumed(std::int32_t field, const Dictation& dictation);

// The texts of all codes, in the language of the thread that made it. For threads that have none.
class CodeTexts {
public:
    CodeTexts();
    // Empty for codes that have none.
    const std::string& of(std::int32_t code) const noexcept;

private:
    std::vector<std::string> texts_; // by code
};

// The same with those texts. Takes only the locale from its thread.
std::string shownValue(std::int32_t field, const Dictation& dictation, const CodeTexts& codes);

// True for fields that sort by sortNumber, false for those that sort by their shown value.
bool sortsByNumber(std::int32_t field) noexcept;

// Sorts before every number.
constexpr double noNumber = -std::numeric_limits<double>::infinity();

// The serial of a date, the seconds of a length, a code; noNumber where it has none.
double sortNumber(std::int32_t field, const Dictation& dictation);

struct Seconds {
    std::int32_t count = 0;
    bool operator==(const Seconds&) const = default;
};
using TypedValue = std::variant<DateSerial, Seconds, std::int64_t>;

// The date, length or number; nothing for text, and for what only looks like one: a number must
// read the same when it is written back, so "007" is text.
std::optional<TypedValue> typedValue(std::int32_t field, const Dictation& dictation);

} // namespace ov::modDictation
