// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

// How a table looks on a terminal. Where nobody looks it is plain.

namespace ov::cli {

enum class When : std::uint8_t { automatic, always, never };

// As asked for.
struct LookOptions {
    When color = When::automatic;
    When pager = When::automatic;
    When hyperlinks = When::automatic;
};

// As it is to be on the standard output.
struct Looks {
    bool color = false;
    bool hyperlinks = false;          // to files
    std::optional<std::size_t> width; // of a line; else as long as its texts

    bool isPlain() const noexcept { return !color && !hyperlinks && !width; }
};

// Colour goes by NO_COLOR and TERM as well, the width by COLUMNS, hyperlinks by what names itself
// in the environment and is known to have them.
Looks looksOf(const LookOptions& options);

// It does nothing but print, says TERM.
bool isDumbTerminal();

// A line of titles, with its line end.
std::string asTitles(std::string line, const Looks& looks);

} // namespace ov::cli
