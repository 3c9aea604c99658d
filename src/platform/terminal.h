// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdio>

// What a terminal program needs to know of its surroundings.

namespace ov::platform {

// True when the stream is shown to a person.
bool isTerminal(std::FILE* stream) noexcept;

// Columns of the terminal behind the stream; 80 when it does not say.
int terminalWidth(std::FILE* stream) noexcept;

} // namespace ov::platform
