// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "cli/looks/looks.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace ov::cli {

// The program that shows what is longer than the screen.
struct Pager {
    std::string command;     // for the shell
    std::size_t rows = 0;    // of the screen that need no pager
    std::size_t columns = 0; // of the screen

    // Whether the text goes beyond these rows. Long lines count as often as they are wrapped.
    bool isNeededFor(std::string_view text) const;
};

// OVSEARCH_PAGER, else PAGER, else less. Nothing where nobody looks, none is wanted ("" and "cat"
// want none) or there is none.
std::optional<Pager> pagerFor(When when);

} // namespace ov::cli
