// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace ov::modDictation {

// The value behind "FIELD:" that somebody is typing in a line of the quick form, see quick_text.h.
struct EnteredValue {
    std::int32_t field = 0;
    // Its place in the line, without "=" and the like. A quote that is not closed, behind which all
    // would belong to it, ends at the cursor.
    std::size_t start = 0;
    std::size_t end = 0;
    std::string text; // up to the cursor, without quotes
};

// That at the cursor, which stands before the byte of that number; nothing where no field is named.
std::optional<EnteredValue> enteredValueAt(std::string_view line, std::size_t cursor);

// A text, as it is typed behind "FIELD:" to be read as that text.
std::string quickValue(std::string_view text);

} // namespace ov::modDictation
