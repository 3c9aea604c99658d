// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

// The writing side of dictation names, the inverse of dictation/name_decoding.h. A search never
// writes a name: the demo store does.
//
// What is written is stricter than what is read:
//   name  = "2$" value { "@@" number "$" value }     what stands before ".WAV"
//   value = text escaped by the scheme of its field, without "@@" in it and without "@" at its
//           end; every number at most once
//
// Pure functions on UTF-8 text, callable from any thread.

namespace ov::modDictation {

// The text as a name carries it. Nothing when it cannot be written so that the same text is read
// back: it is not UTF-8, holds a control character, "@@" or an "@" at its end; or, in the general
// scheme, "~", "_", "'", "\", "|" or what would read as an escape ("!!", "²" before "?"); or, in
// the "²" scheme, a "²" before a digit from 1 to 9 or an "A".
std::optional<std::string> encodeFieldText(std::string_view text);
std::optional<std::string> encodeFieldText2(std::string_view text);

// Puts a name together; the fields stand in the order in which they were added, field 2 first.
class DictationNameBuilder {
public:
    // What file systems take, 255 bytes, without the ".WAV".
    static constexpr std::size_t longestName = 251;

    explicit DictationNameBuilder(std::size_t limit = longestName) : limit_(limit) {}

    // False, and the name is as before, when the field is there already, its number is not
    // positive, the value cannot be written, or the name would grow beyond the limit (bytes).
    bool add(std::int32_t field, std::string_view value);

    // Without the ending; a name without field 2 has it empty.
    const std::string& name() const noexcept { return name_; }

private:
    std::size_t limit_;
    std::string name_ = "2$";
    bool hasStatus_ = false;
};

} // namespace ov::modDictation
