// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "cli/looks/wrapped_row.h"

#include "cli/shown_text.h"

#include <algorithm>
#include <utility>

namespace ov::cli {

std::vector<std::string> wrappedText(std::string_view shown, std::size_t columns) {
    std::vector<std::string> lines;
    while (columnCount(shown) > columns) {
        const std::size_t most = std::max(bytesWithin(shown, columns), bytesWithin(shown, 2));
        const std::size_t blank = shown.substr(0, most + 1).find_last_of(' ');
        const bool hasBlank = blank != std::string_view::npos && blank > 0;
        lines.emplace_back(shown.substr(0, hasBlank ? blank : most));
        shown.remove_prefix(hasBlank ? blank + 1 : most);
    }
    lines.emplace_back(shown);
    return lines;
}

std::string wrappedRow(const Row& cells, const std::vector<std::size_t>& widths) {
    std::vector<Row> lines;
    for (std::size_t i = 0; i < cells.size(); ++i) {
        std::vector<std::string> texts = wrappedText(cells[i], widths[i]);
        lines.resize(std::max(lines.size(), texts.size()), Row(cells.size()));
        for (std::size_t line = 0; line < texts.size(); ++line)
            lines[line][i] = std::move(texts[line]);
    }
    std::string row;
    for (const Row& line : lines)
        row += tableLine(line, widths);
    return row;
}

} // namespace ov::cli
