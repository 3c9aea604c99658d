// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <string_view>

namespace ov {

// Calls `take` with every line, without its end: one of the characters of `ends`, with a "\r"
// before it or without.
template <typename Take>
void forEachLine(std::string_view text, Take take, std::string_view ends = "\n") {
    while (!text.empty()) {
        const std::size_t end = std::min(text.find_first_of(ends), text.size());
        std::string_view line = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        if (line.ends_with('\r'))
            line.remove_suffix(1);
        take(line);
    }
}

} // namespace ov
