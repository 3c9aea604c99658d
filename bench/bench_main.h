// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <exception>
#include <iostream>

namespace ov::bench {

// What main() returns: the answer of `run`, or 1 once it is told why there is none.
template <typename Run>
int runToEnd(const char* program, const Run& run, int argc, char** argv) {
    try {
        return run(argc, argv);
    } catch (const std::exception& error) {
        std::cerr << program << ": " << error.what() << '\n';
        return 1;
    }
}

} // namespace ov::bench
