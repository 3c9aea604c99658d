// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "catalogue/postgres/server_errors.h"

#include <algorithm>
#include <array>
#include <cerrno>

namespace ov::catalogue::loaded {

namespace {

struct Known {
    std::string_view state; // or how it begins
    int number = 0;
    const char* text = "";
};

constexpr std::array known = {
    Known{"53100", ENOSPC, "there is no room for the catalogue on the server's disk"},
    Known{"53200", ENOMEM, "the server has no memory left; try again later"},
    Known{"53300", EBUSY, "the server has too many connections; try again later"},
    Known{"42501", EACCES,
          "your role may not do that; ask whoever runs the server for ovsearch_reader, to ask, or "
          "for ovsearch_updater"},
    Known{"25006", EROFS, "the server takes no changes; it is a copy of another one"},
    Known{"55P03", EBUSY, "another program keeps the catalogue locked; try again later"},
    Known{"40", EBUSY, "another program was quicker; try again"},
    Known{stateOfCancelled, ECANCELED, "the server ended this, it took too long"},
    Known{"57", ECONNRESET, "the server is being shut down; try again when it runs"},
    Known{"58", EIO, "the server cannot read or write its files; see its log"},
    Known{"XX", EIO, "the server's files are damaged; see its log"},
};

} // namespace

ServerError serverError(std::string_view state, std::string_view message) {
    const auto* const found = std::ranges::find_if(
        known, [state](const Known& one) { return state.starts_with(one.state); });
    if (found != known.end())
        return {found->number, found->text};
    return {EIO, "the server refuses: " + std::string(message)};
}

} // namespace ov::catalogue::loaded
