// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include <string>
#include <string_view>

// Texts from file names, made fit for what obeys them: a name can hold line ends, escape sequences
// and marks that turn the writing direction.

namespace ov::exporting {

enum class Gaps { escaped, blank }; // tabs and line ends: "\t", "\n", "\r" or " "

// Control characters and marks that turn the writing direction as "\u001B", an escape of JSON too.
// Bytes that are no UTF-8 are read as Windows-1252.
std::string plainText(std::string_view text, Gaps gaps);

} // namespace ov::exporting
