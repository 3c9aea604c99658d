// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>

// A disk that fails or stalls, for one file and for reads by position. One at a time in a program.

namespace ov::tests {

class FailingReads {
public:
    enum class How : std::uint8_t { fail, stall };

    // From that byte of the file on, which must exist. What stalls goes on at the end of this
    // object; after half a minute it fails, so that a test that is kept by it fails, too.
    FailingReads(const std::string& native, How how, std::int64_t from = 0);
    ~FailingReads();
    FailingReads(FailingReads&&) = delete; // nor copied

    // Waits until a read has met the bad part since the last time.
    static void waitUntilMet();
    // Whether some read has waited for that half minute.
    static bool keptSomebody();
};

} // namespace ov::tests
