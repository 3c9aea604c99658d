// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

namespace ov::tests {

// How often this thread has allocated memory, to prove that a piece of code does not.
std::size_t allocationCount() noexcept;

} // namespace ov::tests
