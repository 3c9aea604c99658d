// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "cli/pointed_complaint.h"

#include "cli/messages.h"
#include "cli/shown_text.h"

#include <algorithm>
#include <cstdio>
#include <string>

namespace ov::cli {

void complainAt(std::string_view message, std::string_view text, std::size_t offset,
                std::size_t length) {
    complain(message);
    const std::size_t begin = std::min(offset, text.size());
    const std::string before = shownText(text.substr(0, begin));
    const std::string marked = shownText(text.substr(begin, length));
    const std::string after = shownText(text.substr(begin + std::min(length, text.size() - begin)));
    const std::size_t width = std::max<std::size_t>(columnCount(marked), 1);
    const std::string mark =
        std::string(columnCount(before), ' ') + '^' + std::string(width - 1, '~');
    static_cast<void>(std::fprintf(stderr, "  %s%s%s\n  %s\n", before.c_str(), marked.c_str(),
                                   after.c_str(), mark.c_str()));
}

} // namespace ov::cli
