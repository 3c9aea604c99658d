// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <string>
#include <string_view>

// Codes of status, priority and state flags. The numbers are stored in criteria files and shown
// in lists: never renumber.

namespace ov::modDictation {

constexpr std::int32_t noCode = 0;

// What the marker field holds for a marked dictation, in either case.
constexpr bool isMarked(std::string_view value) noexcept {
    return value == "D" || value == "d";
}

namespace priority_code {
constexpr std::int32_t normal = 1;
constexpr std::int32_t deadline = 2;
constexpr std::int32_t high = 3;
constexpr std::int32_t edit = 4;
constexpr std::int32_t message = 5;
} // namespace priority_code

namespace status_code {
constexpr std::int32_t wav = 6; // new
constexpr std::int32_t roh = 7; // a draft
constexpr std::int32_t stop = 8;
constexpr std::int32_t mai = 9;
} // namespace status_code

constexpr std::int32_t emptyStatusCode = status_code::wav;        // what an empty one counts as
constexpr std::int32_t emptyPriorityCode = priority_code::normal; // likewise
constexpr std::int32_t firstFlagCode = 10;
constexpr std::int32_t lastFlagCode = 19;

// The code of a field's text: status (dictation fields 2 and 99) 6 to 9, priority (5) 1 to 5,
// flags (17) the sum over the set bits of 10 + the bit's index. 0 for any other text or field.
//
//   WAV 6  ROH 7  STOP 8  MAI 9
//   NORMAL or 1: 1   FRIST or 3: 2   HOCH or 2: 3   EDIT or 5: 4   MSG or 4: 5
// Codes sort by urgency; the digits in the names are older and do not.
std::int32_t GetFieldCode(std::int32_t fieldNumber, std::string_view text);

// The code that a field counts as which is empty or which the name lacks: of status and priority;
// noCode for others.
std::int32_t assumedCode(std::int32_t fieldNumber);

// The text that is shown for a code; empty for codes that have none.
std::string GetStatusText(std::int32_t code);

// The word that file names carry for a code ("ROH", "HOCH"), empty where there is none.
std::string_view codeWord(std::int32_t code) noexcept;

} // namespace ov::modDictation
