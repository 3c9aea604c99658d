// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "cli/messages.h"

#include "cli/shown_text.h"

#include <cstdio>

namespace ov::cli {

void complain(std::string_view message) {
    static_cast<void>(std::fprintf(stderr, "ovsearch: %s\n", shownText(message).c_str()));
}

std::string counted(std::int64_t count, const char* one, const char* many) {
    return std::to_string(count) + ' ' + (count == 1 ? one : many);
}

} // namespace ov::cli
