// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "cli/output.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace ov::cli {

// The row of a table from which nothing is to be missing: a cell that is wider than its column goes
// on in the lines below, from a blank on where it has one.
std::string wrappedRow(const Row& cells, const std::vector<std::size_t>& widths);

// The text in lines of so many columns each; at least one line.
std::vector<std::string> wrappedText(std::string_view shown, std::size_t columns);

} // namespace ov::cli
