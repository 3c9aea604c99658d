// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace ov::platform {

// Who may open a file or directory that is made. What exists keeps the rights that it has: an
// administrator may have let others in on purpose.
enum class Access : std::uint8_t {
    byUmask,   // what the user hands on: exports, dictations
    ownerOnly, // settings, criteria, logs, which name authors and subjects
};

} // namespace ov::platform
