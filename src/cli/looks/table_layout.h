// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "export/document.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

// How a table finds room on a screen.

namespace ov::cli {

// Which of its columns give room first. Those that say in few letters what a dictation is, as its
// state, its dates and its length, are never cut.
enum class Giving : std::uint8_t { first, second, last, never };

Giving givingOf(const exporting::Column& column);

// Widths of columns, two blanks apart, in a line of `room`: the widest of those that give first
// becomes narrower until all fit or each has only a few letters left, then of the others.
std::vector<std::size_t> fittedWidths(std::vector<std::size_t> widths,
                                      std::span<const Giving> givings, std::size_t room);

// What a line of such columns takes.
std::size_t lineWidth(std::span<const std::size_t> widths);

// A cell that is fit to be shown, and which of its bytes are marked.
struct MarkedCell {
    std::string text;
    std::vector<bool> marks; // as many
};

// The cell cut to that many columns, with an ellipsis for what is missing: the end, or for folders
// and paths, of which the end tells more, the beginning; or both, so that something marked is seen.
MarkedCell cutCell(MarkedCell cell, std::size_t columns, const exporting::Column& column);

} // namespace ov::cli
