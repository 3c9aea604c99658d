// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace ov::catalogue::loaded {

// What a server that refuses something says by its five characters.
struct ServerError {
    int number = 0; // an errno
    std::string text;
};

// `message` is the server's own, in its language; it is told where nothing better is known.
ServerError serverError(std::string_view state, std::string_view message);

// What only stopped because somebody asked for it.
constexpr std::string_view stateOfCancelled = "57014";

} // namespace ov::catalogue::loaded
