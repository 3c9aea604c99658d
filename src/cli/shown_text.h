// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <string>
#include <string_view>

// Texts from file names, made fit for a terminal.

namespace ov::cli {

// Without anything that a terminal would obey; see exporting::plainText.
std::string shownText(std::string_view text);

// Columns that the text takes: one a character, two a wide one, none a combining mark.
std::size_t columnCount(std::string_view text);

// How many bytes of the text's first letters take no more columns than these.
std::size_t bytesWithin(std::string_view text, std::size_t columns);

// shownText cut to that many columns, with an ellipsis in place of what is missing.
std::string fittedText(std::string_view text, std::size_t columns);

} // namespace ov::cli
