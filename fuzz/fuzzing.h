// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

// What the programs that look for crashes share.

namespace ov::fuzzing {

// What must hold for any input; ends the program, which libFuzzer reports with the input.
inline void require(bool condition) {
    if (!condition)
        std::abort();
}

inline std::string_view textOf(const std::uint8_t* data, std::size_t size) {
    return {reinterpret_cast<const char*>(data), size};
}

// Takes the part before the first `separator` off the front of `rest`; all of it without one.
inline std::string_view takePart(std::string_view& rest, char separator) {
    const std::size_t end = std::min(rest.find(separator), rest.size());
    const std::string_view part = rest.substr(0, end);
    rest.remove_prefix(std::min(end + 1, rest.size()));
    return part;
}

} // namespace ov::fuzzing
